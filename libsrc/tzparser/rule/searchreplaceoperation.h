#pragma once

#include "host/json/hxjson.h"
#include "tzparser/pattern/appregex.h"

#include <memory>
#include <string>

// One search-and-replace operation of a rule: what to look for in a line and what to put there.
// Read once, with its expression compiled, and shared by all clones of the rule; immutable after
// loading, so threads may share it.
class TZPARSER_API SearchReplaceOperation {
public:
    // Reads an operation from its object; false when the node is none.
    bool Load(const hxJson::Value& node);

    // Replaces in one line; true when the line has changed. The first occurrence goes, or all of
    // them when the operation says so. Throws what the matcher throws, and std::invalid_argument
    // for an expression that doesn't compile.
    bool Apply(std::string& line) const;

    bool HasOriginal() const { return !m_originalStr.empty(); }
    bool IsReplaceAll() const { return m_isReplaceAll; }
    // What is searched for: the text as given, or the expression made of it for a whole-word
    // search.
    const std::string& GetSearchPattern() const { return m_searchPattern; }

private:
    std::string m_originalStr;
    std::string m_replaceStr;
    bool m_isCaseSensitive = false;
    bool m_isWholeWord = false;
    bool m_isReplaceAll = false;
    bool m_isRegex = false;
    std::string m_searchPattern;
    std::shared_ptr<const CAppRegex> m_expression;  // only for regex and whole-word operations
};
