#include "host/json/hxvalue.h"

#include "host/json/hxvaluebody.h"

#include <memory>

namespace hxJson {

static_assert(sizeof(Value) <= 24, "a node should stay small: documents hold many");

namespace {

const Value& SharedNull() noexcept {
    static const Value null;
    return null;
}

std::string_view ViewOf(const char* text) noexcept {
    return text == nullptr ? std::string_view() : std::string_view(text);
}

}  // namespace

Value::Value(ValueType type, bool) : Value() {
    switch (type) {
        case stringValue:
            m_data.text = new std::string;
            break;
        case realValue:
            m_data.real = 0.0;
            break;
        case arrayValue:
            m_data.body = new ArrayBody;
            break;
        case objectValue:
            m_data.body = new ObjectBody;
            break;
        default:
            break;
    }
    m_type = static_cast<unsigned char>(type);
}

Value::Value(std::string&& text) : Value() {
    m_data.text = new std::string(std::move(text));
    m_type = stringValue;
}

Value::Value(const std::string& text) : Value(std::string(text)) {}

Value::Value(std::string_view text) : Value(std::string(text)) {}

Value::Value(const char* text) : Value() {
    if (text != nullptr) *this = Value(std::string(text));
}

Value::Value(long long number) noexcept : Value() {
    m_data.integer = number;
    m_type = intValue;
}

Value::Value(unsigned long long number) noexcept : Value() {
    m_data.natural = number;
    m_type = uintValue;
}

Value::Value(double number) noexcept : Value() {
    m_data.real = number;
    m_type = realValue;
}

Value::Value(const Value& other) : Value() {
    if (other.IsContainer()) {
        CopyTree(other, *this);
    } else {
        CopyFlat(other);
    }
}

Value::Value(Value&& other) noexcept : Value() {
    swap(other);
}

Value::~Value() {
    Release();
}

Value& Value::operator=(const Value& other) {
    Value copy(other);
    swap(copy);
    return *this;
}

Value& Value::operator=(Value&& other) noexcept {
    Value taken(std::move(other));
    swap(taken);
    return *this;
}

void Value::swap(Value& other) noexcept {
    std::swap(m_data, other.m_data);
    std::swap(m_type, other.m_type);
    std::string* const text = m_cachedText.load(std::memory_order_relaxed);
    m_cachedText.store(other.m_cachedText.load(std::memory_order_relaxed),
                       std::memory_order_relaxed);
    other.m_cachedText.store(text, std::memory_order_relaxed);
}

void Value::DropText() noexcept {
    delete m_cachedText.load(std::memory_order_relaxed);
    m_cachedText.store(nullptr, std::memory_order_relaxed);
}

void Value::Release() noexcept {
    DropText();
    if (isString()) delete m_data.text;
    if (IsContainer()) DestroyBodies(TakeBody());
    m_type = nullValue;
}

Value::Elements& Value::BecomeArray() {
    if (!isArray()) *this = Value(arrayValue);
    return elements();
}

Value::Members& Value::BecomeObject() {
    if (!isObject()) *this = Value(objectValue);
    return members();
}

bool Value::empty() const noexcept {
    return isNull() || (IsContainer() && size() == 0);
}

size_t Value::size() const noexcept {
    if (isArray()) return elements().size();
    if (isObject()) return members().size();
    return 0;
}

Value& Value::operator[](const char* name) {
    return (*this)[ViewOf(name)];
}

Value& Value::operator[](const std::string& name) {
    return (*this)[std::string_view(name)];
}

Value& Value::operator[](std::string_view name) {
    Members& own = BecomeObject();
    const auto at = own.lower_bound(name);
    if (at != own.end() && at->first == name) return at->second;
    return own.emplace_hint(at, std::string(name), Value())->second;
}

const Value& Value::operator[](const char* name) const noexcept {
    return (*this)[ViewOf(name)];
}

const Value& Value::operator[](const std::string& name) const noexcept {
    return (*this)[std::string_view(name)];
}

const Value& Value::operator[](std::string_view name) const noexcept {
    const Value* const member = find(name);
    return member == nullptr ? SharedNull() : *member;
}

const Value* Value::find(std::string_view name) const noexcept {
    if (!isObject()) return nullptr;
    const auto at = members().find(name);
    return at == members().end() ? nullptr : &at->second;
}

bool Value::isMember(const char* name) const noexcept {
    return find(ViewOf(name)) != nullptr;
}

bool Value::isMember(const std::string& name) const noexcept {
    return find(name) != nullptr;
}

bool Value::isMember(std::string_view name) const noexcept {
    return find(name) != nullptr;
}

Value Value::removeMember(const std::string& name, bool) {
    if (!isObject()) return Value();
    const auto at = members().find(name);
    if (at == members().end()) return Value();
    Value removed(std::move(at->second));
    members().erase(at);
    return removed;
}

std::vector<std::string> Value::getMemberNames() const {
    std::vector<std::string> names;
    if (!isObject()) return names;
    names.reserve(size());
    for (const auto& member : members()) names.push_back(member.first);
    return names;
}

const Value& Value::operator[](int index) const noexcept {
    return index < 0 ? SharedNull() : (*this)[static_cast<size_t>(index)];
}

const Value& Value::operator[](unsigned int index) const noexcept {
    return (*this)[static_cast<size_t>(index)];
}

const Value& Value::operator[](size_t index) const noexcept {
    return isArray() && index < elements().size() ? elements()[index] : SharedNull();
}

Value& Value::ThrowAway() {
    thread_local Value lost;
    lost = Value();
    return lost;
}

Value& Value::operator[](int index) {
    return index < 0 ? ThrowAway() : (*this)[static_cast<size_t>(index)];
}

Value& Value::operator[](unsigned int index) {
    return (*this)[static_cast<size_t>(index)];
}

Value& Value::operator[](size_t index) {
    return isArray() && index < elements().size() ? elements()[index] : ThrowAway();
}

Value& Value::append(const Value& value) {
    return append(Value(value));
}

Value& Value::append(Value&& value) {
    Value taken(std::move(value));
    Elements& own = BecomeArray();
    own.push_back(std::move(taken));
    return own.back();
}

Value& Value::append(Value* value) {
    return append(value == nullptr ? Value() : Value(*value));
}

ValueIterator Value::begin() noexcept {
    return ValueIterator(*this, false);
}

ValueIterator Value::end() noexcept {
    return ValueIterator(*this, true);
}

ValueConstIterator Value::begin() const noexcept {
    return ValueConstIterator(*this, false);
}

ValueConstIterator Value::end() const noexcept {
    return ValueConstIterator(*this, true);
}

ValueIteratorBase::ValueIteratorBase(const Value& node, bool atEnd) noexcept {
    if (node.isObject()) {
        m_isObject = true;
        m_member = atEnd ? node.members().end() : node.members().begin();
    } else if (node.isArray()) {
        m_first = node.elements().data();
        m_element = m_first + (atEnd ? node.elements().size() : 0);
    }
}

Value* ValueIteratorBase::Current() const noexcept {
    return m_isObject ? &m_member->second : m_element;
}

void ValueIteratorBase::increment() noexcept {
    if (m_isObject) {
        ++m_member;
    } else {
        ++m_element;
    }
}

bool ValueIteratorBase::isEqual(const ValueIteratorBase& other) const noexcept {
    if (m_isObject != other.m_isObject) return false;
    return m_isObject ? m_member == other.m_member : m_element == other.m_element;
}

const std::string& ValueIteratorBase::memberName() const noexcept {
    static const std::string none;
    return m_isObject ? m_member->first : none;
}

Value ValueIteratorBase::key() const {
    if (m_isObject) return Value(m_member->first);
    return Value(static_cast<long long>(m_element - m_first));
}

}  // namespace hxJson
