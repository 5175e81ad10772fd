#pragma once

#include <set>
#include <string>
#include <vector>

// What a rule below a paragraph asks of it. The paragraph rule, on a higher floor, implements this;
// a rule gets it through CAppParseRule::AsParagraphScope. References live as long as the paragraph
// isn't edited or parsed.
class IParagraphScope {
public:
    // The statements that identify a paragraph: its start line, when it has one, then its id lines.
    virtual std::vector<std::string> GetIDLines() const = 0;
    // The statement of the parent line; empty when there is none.
    virtual const std::string& GetParentLine() const = 0;
    // The statement of the start line alone, for editing.
    virtual const std::string& GetStartLine() const = 0;
    virtual void SetStartLine(const std::string& statement) = 0;
    // Whether variables carry their value over from one paragraph to the next, and which.
    virtual bool IsUsePreVars() const = 0;
    virtual const std::set<std::string>& GetUsePreVars() const = 0;
    // The paragraphs of the last parse: first lines and exclusive ends, index by index, absolute in
    // the text.
    virtual const std::vector<int>& GetBeginLines() const = 0;
    virtual const std::vector<int>& GetEndLines() const = 0;

protected:
    ~IParagraphScope() = default;
};
