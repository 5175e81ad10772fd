#pragma once

#include "tzparser/text/letlist.h"

#include <map>
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
    // Whether these are they: what a rule below asks at each run.
    virtual bool AreIDLines(const std::vector<std::string>& lines) const {
        return GetIDLines() == lines;
    }
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
    // Stores the rows of empty cells that were kept back from the tables directly below.
    virtual void StoreAwaitedRows() {}

protected:
    ~IParagraphScope() = default;
};

// The index of the first paragraph that holds a line; -1 when none does. A binary search: begins
// and ends never fall from one index to the next. When the counts of both differ, the smaller one
// holds.
int FindParagraph(const IParagraphScope& paragraphs, int line);

// Repeats the values of an outer paragraph for what stands inside it. `lines` are the lines of the
// inner rows or paragraphs, ascending. Each value is appended once for each of them in the
// paragraph that holds the value, the last value for all lines behind its paragraph's begin as
// well. A value outside of all paragraphs goes by the bounds of the value before it.
void AppendOuterValues(const CLetColumn& values, const IParagraphScope& paragraphs,
                       const std::vector<int>& lines, CLetList& result);
