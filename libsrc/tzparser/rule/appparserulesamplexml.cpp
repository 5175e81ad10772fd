// The sample's XML form. Interface keys are written beside the rules, but read from among them, so
// a document that was saved doesn't give them back.
#include "host/xml/markup.h"
#include "tzparser/rule/appparserulesample.h"
#include "tzparser/rule/delimitedset.h"
#include "tzparser/rule/markuplists.h"
#include "tzparser/rule/rulekeys.h"

bool CAppParseRuleSample::LoadFromXml(CMarkup& xml) {
    if (!FindFirstElem(xml, RuleKey::ParseRules)) return false;
    DeleteChildren();
    const AppMarkupLevel level(xml);
    FillFromXml(xml, {RuleType_KeyWord, RuleType_Filter, RuleType_DesignReader, RuleType_Table,
                      RuleType_Paragraph, RuleType_Ping, RuleType_TraceRoute, RuleType_Script,
                      RuleType_DiffFilter});
    if (FindFirstElem(xml, RuleKey::Variables)) {
        std::string keys;
        xml.GetData(RuleKey::VariablesInterfaceKeys, keys);
        m_interfaceKeys.merge(SplitDelimitedSet(keys, ',', '\0'));
    }
    ShareCachedRegex();
    return true;
}

bool CAppParseRuleSample::SaveToXml(CMarkup& xml) {
    bool isComplete = false;
    {
        const AppMarkupLevel rules(xml, RuleKey::ParseRules);
        isComplete = rules && SaveChildrenToXml(xml);
    }
    const AppMarkupLevel variables(xml, RuleKey::Variables);
    return variables && xml.AddElem(RuleKey::VariablesInterfaceKeys, JoinedInterfaceKeys()) &&
           isComplete;
}
