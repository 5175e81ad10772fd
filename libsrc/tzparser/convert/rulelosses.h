#pragma once

#include "host/json/hxjson.h"
#include "tzparser/convert/conversionloss.h"

#include <string>
#include <vector>

class CMarkup;

// CRuleLosses finds what a conversion of rules loses, by comparing three things: the document that
// was converted; what the rules read from it hold; and what the rules hold that were read from the
// converted document. The last two are in the shape of `LoadableRules`.
//
//     CRuleLosses losses("XML", found);
//     losses.CompareDocument(lowered, held, back, "parserRules");
//
// So what nobody reads is told by the first two, what the other form can't hold by the last two.
// Documents are walked as loading walks them, so each rule is known by its place in the source. A
// walk calls itself once a level of rules; their depth is limited where they are read.
class CRuleLosses {
public:
    // `target` names the form converted to; `losses` gets what is found and must outlive this.
    CRuleLosses(const char* target, ConversionLosses& losses)
        : m_target(target), m_losses(losses) {}

    void Add(const std::string& place, const std::string& reason);
    // That a member has no place in the target.
    void AddPlaceless(const std::string& place);
    // That nothing reads a member, unless it says nothing.
    void AddUnread(const std::string& place, const hxJson::Value& value);
    // All members of an object that the other doesn't have, at any depth to which both go; `label`
    // goes behind each place.
    void CompareKeys(const hxJson::Value& source, const hxJson::Value& held,
                     const std::string& path, const std::string& label = std::string());
    // What differs between two values of one key.
    void CompareValues(const hxJson::Value& held, const hxJson::Value& back,
                       const std::string& path, const std::string& label = std::string());

    // Rules from a JSON document with its keys in small letters.
    void CompareDocument(const hxJson::Value& source, const hxJson::Value& held,
                         const hxJson::Value& back, const std::string& path);
    // Rules from XML; the cursor's level is the inside of the element that holds them.
    void CompareMarkup(CMarkup& xml, const hxJson::Value& held, const hxJson::Value& back,
                       const std::string& path);

private:
    // A rule as it was read, and as it came back: null when it didn't.
    struct Rule {
        const hxJson::Value* held;
        const hxJson::Value* back;
        int ruleType;
    };
    // The rules below a holder, in order, with a mark at the next that has no place in the source.
    struct Rules {
        std::vector<Rule> rules;
        bool hasDefault;
        std::size_t next;

        // The rule that a source node of that type made: null when it made none.
        const Rule* Take(int ruleType, bool isFirst);
    };

    static Rules RulesOf(const hxJson::Value& held, const hxJson::Value& back, int parentType);
    static std::string Label(const Rule& rule);
    void CompareNodes(const hxJson::Value& source, const hxJson::Value& held,
                      const hxJson::Value& back, const std::string& path, int parentType);
    void CompareNode(const hxJson::Value& source, const Rule& rule, const std::string& path);
    void CompareOwn(const Rule& rule, const std::string& path);
    void CompareElements(CMarkup& xml, const hxJson::Value& held, const hxJson::Value& back,
                         const std::string& path, int parentType);
    void CompareElement(CMarkup& xml, const Rule& rule, const std::string& path);
    void CompareParts(CMarkup& xml, const Rule& rule, const std::string& path);
    bool Takes(const Rule* rule, int ruleType, const std::string& path);

    const char* m_target;
    ConversionLosses& m_losses;
};
