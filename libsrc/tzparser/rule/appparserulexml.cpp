// The XML form of a rule tree. The element of a rule, "parserule", is written by the kind itself,
// with "type" in front; a rule finds the cursor inside its element when it is read. The base reads
// and writes what stands below a rule:
//
//     <child><parserule><type>0</type>...</parserule>...</child>
//
// Not all kinds are read here: an element of another kind is skipped with what is in it, and its
// siblings are read. Reading, like all else that walks over a tree of rules, calls itself once a
// level, so the depth of trees is limited.
#include "host/xml/markup.h"
#include "tzparser/rule/appparserule.h"
#include "tzparser/rule/markuplists.h"
#include "tzparser/rule/rulefactory.h"
#include "tzparser/rule/rulekeys.h"

#include <algorithm>

namespace {

// As deep as a tree from a JSON document can be, where a rule takes three levels of the reader's
// 1000. So a tree that was read from one form can be written in the other and read again.
constexpr int MaxRuleDepth = 333;

int DepthOf(const CAppParseRule& rule) {
    int depth = 0;
    for (const auto* above = rule.GetParentRule(); above != nullptr; above = above->GetParentRule())
        ++depth;
    return depth;
}

}  // namespace

bool CAppParseRule::LoadFromXml(CMarkup& xml) {
    if (!FindFirstElem(xml, RuleKey::Child)) return true;
    const AppMarkupLevel level(xml);
    FillFromXml(xml, {RuleType_KeyWord, RuleType_Filter, RuleType_DesignReader, RuleType_Table,
                      RuleType_Paragraph, RuleType_DiffFilter});
    return true;
}

// The first rule that is made, not the first element, can be the default child.
void CAppParseRule::FillFromXml(CMarkup& xml, std::initializer_list<RuleType> known) {
    if (DepthOf(*this) >= MaxRuleDepth) return;
    bool isFirst = true;
    xml.ResetChildPos();
    while (xml.FindElem(RuleKey::ParseRule)) {
        const AppMarkupLevel level(xml);
        int type = RuleType_KeyWord;
        xml.GetData(RuleKey::Type, type);
        if (std::find(known.begin(), known.end(), type) == known.end()) continue;
        auto* rule = AddRuleOfType(type, isFirst, RuleNodeForm_Array);
        if (rule == nullptr) continue;
        isFirst = false;
        xml.ResetChildPos();
        rule->LoadFromXml(xml);
    }
}

bool CAppParseRule::SaveToXml(CMarkup& xml) {
    if (m_children.empty()) return true;
    const AppMarkupLevel level(xml, RuleKey::Child);
    return level && SaveChildrenToXml(xml);
}

bool CAppParseRule::SaveChildrenToXml(CMarkup& xml) {
    bool isComplete = true;
    for (const auto& child : m_children) isComplete = child->SaveToXml(xml) && isComplete;
    return isComplete;
}
