#include "tzparser/convert/rulewords.h"

#include "tzparser/rule/appparserule.h"

#include <array>
#include <vector>

namespace {

struct Kind {
    int ruleType;
    const char* words;
};

constexpr Kind Kinds[] = {
    {RuleType_KeyWord, "keyword"},
    {RuleType_Filter, "filter"},
    {RuleType_DesignReader, "design reader"},
    {RuleType_Table, "table"},
    {RuleType_Paragraph, "paragraph"},
    {RuleType_Ping, "ping"},
    {RuleType_TraceRoute, "traceroute"},
    {RuleType_Script, "script"},
    {RuleType_DiffFilter, "diff filter"},
    {RuleType_Text, "text"},
};

// The kinds whose XML form has an element, as bits.
constexpr unsigned Bit(int ruleType) {
    return 1U << static_cast<unsigned>(ruleType);
}

constexpr unsigned KeyWords = Bit(RuleType_KeyWord) | Bit(RuleType_Ping) | Bit(RuleType_TraceRoute);
constexpr unsigned Filter = Bit(RuleType_Filter);
constexpr unsigned Design = Bit(RuleType_DesignReader);
constexpr unsigned Table = Bit(RuleType_Table);
constexpr unsigned Paragraph = Bit(RuleType_Paragraph);
constexpr unsigned Script = Bit(RuleType_Script);
constexpr unsigned Diff = Bit(RuleType_DiffFilter);
constexpr unsigned Text = Bit(RuleType_Text);

struct Row {
    unsigned kinds;
    RuleElement element;
};

constexpr Row Rows[] = {
    {Filter | Design | Table | Paragraph | Diff | Text, {"name", "", false}},
    {KeyWords, {"keywords", " keyword ", false}},
    {KeyWords, {"statements", " statement ", false}},
    {KeyWords | Table, {"variabletypes", " variabletype ", false}},
    {Filter | Paragraph, {"startline", "", false}},
    {Filter | Table | Paragraph, {"endline", "", false}},
    {Filter, {"skiplines", " skipline ", false}},
    {Filter, {"includelines", " includeline ", false}},
    {Filter, {"excludelines", " excludeline ", false}},
    {Filter, {"filterloop", "", false}},
    {Filter | Paragraph, {"excludeendline", "", false}},
    {Filter, {"excludebeginline", "", false}},
    {Filter, {"asconfiglet", "", false}},
    {Design, {"drname", "", false}},
    {Design, {"drcode", "", false}},
    {Table, {"headers", "", false}},
    {Table, {"isskipline", "", false}},
    {Table, {"skipline", "", false}},
    {Table, {"headertovariables", "", false}},
    {Table, {"leftalign", "", false}},
    {Table, {"aligntype", "", false}},
    {Table, {"alignrange", "", false}},
    {Table | Paragraph, {"keyvariables", "", false}},
    {Table | Paragraph, {"isuseprevars", "", false}},
    {Table | Paragraph, {"useprevars", "", false}},
    {Table | Paragraph, {"hashColumns", "", true}},
    {Table | Paragraph, {"hashSort", "", false}},
    {Paragraph, {"islineasparagraph", "", false}},
    {Paragraph, {"lineasparagraph", "", false}},
    {Script, {"script", "", false}},
    {Script, {"variabletypes", " variabletype name type ", false}},
    {Script,
     {"tablevariabletypes", " tablevariabletype variabletypes variabletype tablecolumns name type ",
      false}},
    {Diff, {"lines", " row text added ", true}},
    {Text, {"lines", " row text ", true}},
};

}  // namespace

std::string RuleKindWords(int ruleType) {
    for (const auto& kind : Kinds)
        if (kind.ruleType == ruleType) return kind.words;
    return "rule of type " + std::to_string(ruleType);
}

bool HasDefaultChild(int ruleType) {
    return ruleType == RuleType_Filter || ruleType == RuleType_DesignReader ||
           ruleType == RuleType_Paragraph;
}

const RuleElement* FindRuleElement(int ruleType, std::string_view name) {
    if (ruleType < 0 || ruleType > RuleType_Text) return nullptr;
    for (const auto& row : Rows)
        if ((row.kinds & Bit(ruleType)) != 0 && row.element.name == name) return &row.element;
    return nullptr;
}

// With a list of what is left to look at, since a document may be deep.
bool SaysNothing(const hxJson::Value& value) {
    std::vector<const hxJson::Value*> pending = {&value};
    while (!pending.empty()) {
        const auto* node = pending.back();
        pending.pop_back();
        if (node->isArray() || node->isObject()) {
            for (const auto& part : *node) pending.push_back(&part);
        } else if (node->isString() ? !node->stringView().empty() : node->asBool()) {
            return false;
        }
    }
    return true;
}
