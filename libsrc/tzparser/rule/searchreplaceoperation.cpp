#include "tzparser/rule/searchreplaceoperation.h"

#include "tzparser/rule/rulekeys.h"
#include "tzparser/text/appstrutil.h"

namespace {

constexpr unsigned PerlNoExcept = 0x40000;
constexpr unsigned IgnoreCase = 0x100000;

}  // namespace

bool SearchReplaceOperation::Load(const hxJson::Value& node) {
    if (!node.isObject()) return false;
    m_originalStr = node[RuleKey::OriginalStr].asString();
    m_replaceStr = node[RuleKey::ReplaceStr].asString();
    m_isCaseSensitive = node[RuleKey::IsCaseSensitive].asBool();
    m_isWholeWord = node[RuleKey::IsWholeWord].asBool();
    m_isReplaceAll = node[RuleKey::IsReplaceAll].asBool();
    m_isRegex = node[RuleKey::IsRegex].asBool();
    m_searchPattern = m_originalStr;
    if (!m_isRegex && m_isWholeWord)
        m_searchPattern = "\\b" + AppStrUtil::StrTransRegex(m_originalStr, true, true) + "\\b";
    if (m_isRegex || m_isWholeWord)
        m_expression = std::make_shared<const CAppRegex>(
            m_searchPattern, PerlNoExcept | (m_isCaseSensitive ? 0U : IgnoreCase));
    return true;
}

bool SearchReplaceOperation::Apply(std::string& line) const {
    if (m_expression) return m_expression->Replace(line, m_replaceStr, m_isReplaceAll);
    std::string before = line;
    AppStrUtil::StrReplace(line, m_searchPattern, m_replaceStr, !m_isCaseSensitive, m_isReplaceAll);
    return line != before;
}
