#include "jsonlayout.h"

#include "host/json/jsontext.h"

#include <algorithm>

namespace {

constexpr std::size_t BlanksALevel = 2;
constexpr std::size_t MaxIndentedLevels = 100;

}  // namespace

void CJsonLayout::Begin(char bracket) {
    Value() += bracket;
    m_open.push_back({bracket, true});
}

void CJsonLayout::End() {
    const auto level = m_open.back();
    m_open.pop_back();
    if (!level.isEmpty) NextLine();
    m_out.Buffer() += level.bracket == '{' ? '}' : ']';
    if (m_open.empty()) m_out.Buffer() += '\n';
}

void CJsonLayout::Key(std::string_view name) {
    Separate();
    hxJson::AppendQuotedJson(m_out.Buffer(), name);
    m_out.Buffer() += ": ";
}

std::string& CJsonLayout::Value() {
    if (!m_open.empty() && m_open.back().bracket == '[') Separate();
    return m_out.Buffer();
}

void CJsonLayout::Separate() {
    m_out.Drain();
    if (!m_open.back().isEmpty) m_out.Buffer() += ',';
    m_open.back().isEmpty = false;
    NextLine();
}

void CJsonLayout::NextLine() {
    m_out.Buffer() += '\n';
    m_out.Buffer().append(BlanksALevel * std::min(m_open.size(), MaxIndentedLevels), ' ');
}
