#pragma once

#include "host/runtime/tzexport.h"

#include <string>
#include <vector>

class CAppParseRule;
class CMarkup;

// What the rule kinds share in reading and writing their XML form with the cursor of a CMarkup.
//
//     std::vector<std::string> texts;
//     ReadTextList(xml, "skiplines", "skipline", texts);
//
//     const AppMarkupRule rule(xml, RuleType_Filter);
//     if (!rule) return false;
//     AddTextList(xml, "skiplines", "skipline", texts);
//
// Readers start at the first child of the level; where they leave the cursor on it isn't told.
// Writers are false when something couldn't be added, since the document would be too deep.

// The inside of an element as the level of a document, for as long as the object lives.
class TZPARSER_API AppMarkupLevel {
public:
    // Enters the current element.
    explicit AppMarkupLevel(CMarkup& xml);
    // Adds an element to the level and enters it.
    AppMarkupLevel(CMarkup& xml, const char* name);
    ~AppMarkupLevel();
    AppMarkupLevel(const AppMarkupLevel&) = delete;
    AppMarkupLevel& operator=(const AppMarkupLevel&) = delete;

    // False when there was no element to enter, or none could be added; the level is then the one
    // it was, and nothing should be added to it.
    explicit operator bool() const { return m_isInside; }

protected:
    CMarkup& m_xml;
    bool m_isInside;
};

// The element of a rule, added and entered, with the number of the rule's kind in it.
class TZPARSER_API AppMarkupRule : public AppMarkupLevel {
public:
    AppMarkupRule(CMarkup& xml, int ruleType);

    // False also when the element is the deepest there can be and so holds nothing.
    explicit operator bool() const { return m_isComplete; }

private:
    bool m_isComplete;
};

// Makes the first element of that name on the level the current one. False when there is none; the
// cursor then stands before the first element.
TZPARSER_API bool FindFirstElem(CMarkup& xml, const char* name);

// Appends the data of all elements of that name on the level.
TZPARSER_API void ReadTexts(CMarkup& xml, const char* name, std::vector<std::string>& texts);
// The same for the elements inside the first container element of that name; false when there is
// none.
TZPARSER_API bool ReadTextList(CMarkup& xml, const char* container, const char* name,
                               std::vector<std::string>& texts);
// Adds the container, also for no texts, and in it an element per text.
TZPARSER_API bool AddTextList(CMarkup& xml, const char* container, const char* name,
                              const std::vector<std::string>& texts);

// Adds a flag as 1 or 0.
TZPARSER_API void AddFlag(CMarkup& xml, const char* name, bool flag);

// The hash settings of a table or paragraph: a "hashColumns" element per column, and "hashSort".
// What has no element stays with the rule.
TZPARSER_API void LoadHashSettings(CMarkup& xml, CAppParseRule& rule);
TZPARSER_API void SaveHashSettings(CMarkup& xml, const CAppParseRule& rule);
