#include "host/xml/markup.h"

#include "host/text/asciicase.h"
#include "host/xml/markupscan.h"
#include "host/xml/utf8repair.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <pugixml.hpp>

// The tree is pugixml's. It is read with white space and line ends kept, and written and freed
// without recursion; the scan in front limits the depth all the same, so that walks over a document
// stay short for everybody.

struct CMarkup::Tree {
    pugi::xml_document m_document;
    pugi::xml_node m_level = m_document;
    pugi::xml_node m_current;
    // A document that was read holds its own white space, which indenting would change. And very
    // many elements very deep would become a huge text, be they read or added.
    bool m_isIndented = true;

    // The element that data and attributes belong to; null on the document's level without a
    // current element.
    pugi::xml_node Subject() const {
        if (m_current) return m_current;
        return m_level.type() == pugi::node_element ? m_level : pugi::xml_node();
    }
    void GoTo(pugi::xml_node level, pugi::xml_node current) {
        m_level = level;
        m_current = current;
    }
    pugi::xml_node Append(const std::string& name);
};

namespace {

constexpr unsigned int ParseFlags = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_ws_pcdata;
constexpr int MaxIndentedDepth = 100;
constexpr char Declaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
constexpr std::string_view WhiteSpace = " \t\r\n";

struct StringWriter : pugi::xml_writer {
    std::string m_text;
    void write(const void* data, std::size_t size) override {
        m_text.append(static_cast<const char*>(data), size);
    }
};

bool IsNameByte(char c, bool first) {
    if (c == '_' || c == ':' || static_cast<unsigned char>(c) >= 0x80) return true;
    if (first) return AsciiIsAlnum(c) && !AsciiIsDigit(c);
    return AsciiIsAlnum(c) || c == '-' || c == '.';
}

bool IsName(const std::string& name) {
    if (name.empty() || !IsNameByte(name.front(), true)) return false;
    return std::all_of(name.begin(), name.end(), [](char c) { return IsNameByte(c, false); });
}

std::string WithoutNul(std::string text) {
    std::replace(text.begin(), text.end(), '\0', '?');
    return text;
}

bool IsText(pugi::xml_node node) {
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

bool IsElement(pugi::xml_node node) {
    return node.type() == pugi::node_element;
}

std::string DataOf(pugi::xml_node element) {
    const bool hasChildren = static_cast<bool>(element.find_child(IsElement));
    std::string data;
    for (pugi::xml_node node = element.first_child(); node; node = node.next_sibling()) {
        if (!IsText(node)) continue;
        const std::string_view text = node.value();
        const bool blank = text.find_first_not_of(WhiteSpace) == std::string_view::npos;
        if (!hasChildren || !blank) data += text;
    }
    return data;
}

int ToInt(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(WhiteSpace), text.size()));
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    int value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc::result_out_of_range) return value;
    return text[0] == '-' ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
}

bool ToBool(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(WhiteSpace), text.size()));
    text = text.substr(0, text.find_last_not_of(WhiteSpace) + 1);
    return AsciiEqualIgnoreCase(text, "true") || ToInt(text) != 0;
}

int DepthOf(pugi::xml_node node) {
    int depth = 0;
    for (; IsElement(node); node = node.parent()) ++depth;
    return depth;
}

CMarkup::Pos ToPos(pugi::xml_node node) {
    return IsElement(node) ? reinterpret_cast<CMarkup::Pos>(node.internal_object()) : nullptr;
}

pugi::xml_node FromPos(CMarkup::Pos pos) {
    return pugi::xml_node(
        reinterpret_cast<pugi::xml_node_struct*>(const_cast<CMarkup::Node*>(pos)));
}

}  // namespace

pugi::xml_node CMarkup::Tree::Append(const std::string& name) {
    const int depth = DepthOf(m_level);
    if (!IsName(name) || depth >= MaxDepth) return pugi::xml_node();
    if (depth >= MaxIndentedDepth) m_isIndented = false;
    return m_level.append_child(name.c_str());
}

CMarkup::CMarkup() : m_tree(std::make_unique<Tree>()) {}

CMarkup::~CMarkup() = default;

bool CMarkup::SetDoc(const std::string& text) {
    m_tree = std::make_unique<Tree>();
    const auto fail = [this](const char* reason, std::size_t offset) {
        m_tree = std::make_unique<Tree>();
        m_error = std::string(reason) + " at byte " + std::to_string(offset);
        return false;
    };
    MarkupScan scan(text, MaxDepth);
    if (!scan.Run()) return fail(scan.GetReason(), scan.GetOffset());
    const pugi::xml_parse_result result =
        m_tree->m_document.load_buffer(text.data(), text.size(), ParseFlags, pugi::encoding_utf8);
    if (!result) return fail(result.description(), static_cast<std::size_t>(result.offset));
    m_tree->m_isIndented = false;
    m_error.clear();
    return true;
}

std::string CMarkup::GetDoc() const {
    if (!m_tree->m_document.first_child()) return std::string();
    StringWriter writer;
    writer.m_text = Declaration;
    for (const pugi::xml_node node : m_tree->m_document) {
        const unsigned int flags = m_tree->m_isIndented ? pugi::format_indent : pugi::format_raw;
        node.print(writer, "  ", flags, pugi::encoding_utf8);
        if (!m_tree->m_isIndented) writer.m_text += '\n';
    }
    return Utf8Repair(std::move(writer.m_text));
}

bool CMarkup::FindElem(const std::string& name) {
    pugi::xml_node node =
        m_tree->m_current ? m_tree->m_current.next_sibling() : m_tree->m_level.first_child();
    while (node && (!IsElement(node) || (!name.empty() && name != node.name())))
        node = node.next_sibling();
    if (!node) return false;
    m_tree->m_current = node;
    return true;
}

bool CMarkup::IntoElem() {
    if (!m_tree->m_current) return false;
    m_tree->GoTo(m_tree->m_current, pugi::xml_node());
    return true;
}

bool CMarkup::OutOfElem() {
    if (!IsElement(m_tree->m_level)) return false;
    m_tree->GoTo(m_tree->m_level.parent(), m_tree->m_level);
    return true;
}

bool CMarkup::AddElem(const std::string& name, const std::string& value, int) {
    const pugi::xml_node node = m_tree->Append(name);
    if (!node) return false;
    if (!value.empty()) node.text().set(WithoutNul(value).c_str());
    m_tree->m_current = node;
    return true;
}

bool CMarkup::AddElem(const std::string& name, const char* value, int flags) {
    return AddElem(name, std::string(value == nullptr ? "" : value), flags);
}

bool CMarkup::AddElem(const std::string& name, int value, int flags) {
    return AddElem(name, std::to_string(value), flags);
}

std::string CMarkup::GetTagName() const {
    return m_tree->m_current.name();
}

std::string CMarkup::GetData() const {
    return DataOf(m_tree->Subject());
}

bool CMarkup::GetData(const std::string& childName, std::string& value) const {
    const pugi::xml_node child = m_tree->Subject().child(childName.c_str());
    if (child) value = DataOf(child);
    return static_cast<bool>(child);
}

bool CMarkup::GetData(const std::string& childName, int& value) const {
    std::string text;
    if (!GetData(childName, text)) return false;
    value = ToInt(text);
    return true;
}

bool CMarkup::GetData(const std::string& childName, bool& value) const {
    std::string text;
    if (!GetData(childName, text)) return false;
    value = ToBool(text);
    return true;
}

bool CMarkup::GetAttrib(const std::string& name, std::string& value) const {
    const pugi::xml_attribute attribute = m_tree->Subject().attribute(name.c_str());
    if (attribute) value = attribute.value();
    return static_cast<bool>(attribute);
}

bool CMarkup::GetAttrib(const std::string& name, int& value) const {
    const pugi::xml_attribute attribute = m_tree->Subject().attribute(name.c_str());
    if (attribute) value = ToInt(attribute.value());
    return static_cast<bool>(attribute);
}

bool CMarkup::SetAttrib(const std::string& name, const std::string& value) {
    pugi::xml_node subject = m_tree->Subject();
    if (!subject || !IsName(name)) return false;
    pugi::xml_attribute attribute = subject.attribute(name.c_str());
    if (!attribute) attribute = subject.append_attribute(name.c_str());
    return attribute.set_value(WithoutNul(value).c_str());
}

bool CMarkup::SetAttrib(const std::string& name, const char* value) {
    return SetAttrib(name, std::string(value == nullptr ? "" : value));
}

bool CMarkup::SetAttrib(const std::string& name, int value) {
    return SetAttrib(name, std::to_string(value));
}

void CMarkup::ResetPos() {
    m_tree->GoTo(m_tree->m_document, pugi::xml_node());
}

void CMarkup::ResetChildPos() {
    m_tree->m_current = pugi::xml_node();
}

void CMarkup::x_SetPos(Pos parent, Pos element, Pos) {
    ResetPos();
    if (parent != nullptr) m_tree->m_level = FromPos(parent);
    const pugi::xml_node node = FromPos(element);
    if (node && node.parent() == m_tree->m_level) m_tree->m_current = node;
}

CMarkup::Pos CMarkup::GetParentPos() const {
    return ToPos(m_tree->m_level);
}

CMarkup::Pos CMarkup::GetElemPos() const {
    return ToPos(m_tree->m_current);
}
