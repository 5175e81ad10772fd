// The operations of Value that walk a whole tree: copy, comparison and destruction. Each keeps the
// nodes it still has to visit in a list instead of calling itself, so that depth costs no stack.

#include "host/json/hxvaluebody.h"

#include <memory>

namespace hxJson {

namespace {

struct CopyStep {
    const Value* from;
    Value* to;
};

struct CompareStep {
    const Value* left;
    const Value* right;
};

}  // namespace

void Value::CopyFlat(const Value& other) {
    if (other.isString()) {
        m_data.text = new std::string(*other.m_data.text);
    } else {
        m_data = other.m_data;
    }
    m_type = other.m_type;
}

// Copies everything but arrays and objects on sight and puts those on the list. The copied elements
// stay where they are while their own elements are filled in, so the list can hold pointers to
// them.
void Value::CopyTree(const Value& from, Value& to) {
    std::vector<CopyStep> pending;
    const auto visit = [&pending](const Value& source, Value& copy) {
        if (source.IsContainer()) {
            pending.push_back({&source, &copy});
        } else {
            copy.CopyFlat(source);
        }
    };
    visit(from, to);
    while (!pending.empty()) {
        const CopyStep step = pending.back();
        pending.pop_back();
        if (step.from->isArray()) {
            const Elements& source = step.from->elements();
            Elements& copy = step.to->BecomeArray();
            copy.resize(source.size());
            for (size_t i = 0; i < source.size(); ++i) visit(source[i], copy[i]);
        } else {
            Members& copy = step.to->BecomeObject();
            for (const auto& [name, member] : step.from->members()) {
                visit(member, copy.emplace_hint(copy.end(), name, Value())->second);
            }
        }
    }
}

bool Value::EqualFlat(const Value& other) const noexcept {
    if (m_type != other.m_type) {
        return isUInt64() && other.isUInt64() && asUInt64() == other.asUInt64();
    }
    switch (type()) {
        case nullValue:
            return true;
        case realValue:
            return m_data.real == other.m_data.real;
        case stringValue:
            return *m_data.text == *other.m_data.text;
        case arrayValue:
        case objectValue:
            return size() == other.size();
        default:
            return m_data.natural == other.m_data.natural;
    }
}

bool Value::operator==(const Value& other) const {
    std::vector<CompareStep> pending;
    const auto visit = [&pending](const Value& left, const Value& right) {
        if (!left.EqualFlat(right)) return false;
        if (!left.empty() && left.IsContainer()) pending.push_back({&left, &right});
        return true;
    };
    if (!visit(*this, other)) return false;
    while (!pending.empty()) {
        const CompareStep step = pending.back();
        pending.pop_back();
        ValueConstIterator right = step.right->begin();
        const ValueConstIterator end = step.left->end();
        for (ValueConstIterator left = step.left->begin(); left != end; ++left, ++right) {
            if (left.memberName() != right.memberName() || !visit(*left, *right)) return false;
        }
    }
    return true;
}

Value::Body* Value::TakeBody() noexcept {
    Body* const body = m_data.body;
    m_type = nullValue;
    m_data.integer = 0;
    return body;
}

// Before a body goes, the bodies of its elements are taken off and chained in front of the rest, so
// that the elements that go with it are all flat. Needs no memory.
void Value::DestroyBodies(Body* pending) noexcept {
    const auto unhook = [&pending](Value& element) {
        if (!element.IsContainer()) return;
        Body* const body = element.TakeBody();
        body->next = pending;
        pending = body;
    };
    while (pending != nullptr) {
        Body* const body = pending;
        pending = body->next;
        if (body->isObject) {
            const std::unique_ptr<ObjectBody> object(static_cast<ObjectBody*>(body));
            for (auto& member : object->members) unhook(member.second);
        } else {
            const std::unique_ptr<ArrayBody> array(static_cast<ArrayBody*>(body));
            for (Value& element : array->elements) unhook(element);
        }
    }
}

}  // namespace hxJson
