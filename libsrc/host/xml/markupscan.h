#pragma once

#include <cstddef>
#include <string>

// MarkupScan looks over an XML text before a tree is made of it, so that hostile texts are refused
// at the cost of one forward pass: it follows tags, quoted attribute values, comments, CDATA
// sections and processing instructions just far enough to know how deep elements nest, and checks
// what the tree builder lets through silently. Whether the text is well formed otherwise is left to
// that.
//
//     MarkupScan scan(text, 1000);
//     if (!scan.Run()) report(scan.GetReason(), scan.GetOffset());
//
// The text must outlive the object. Not shared between threads.
class MarkupScan {
public:
    MarkupScan(const std::string& text, int maxDepth) : m_text(text), m_maxDepth(maxDepth) {}

    // False for a NUL, nesting beyond the limit, a document type declaration, text outside the
    // elements, a reference to a character that doesn't exist, and markup that doesn't end.
    bool Run();

    // Why Run was false, and the byte at which.
    const char* GetReason() const { return m_reason; }
    std::size_t GetOffset() const { return m_offset; }

private:
    bool Fail(const char* reason, std::size_t offset);
    bool Markup();
    bool StartTag();
    bool EndTag();
    bool SkipTo(const char* terminator, std::size_t from);
    bool Data(std::size_t end);
    bool References(std::size_t begin, std::size_t end);
    bool StartsWith(const char* word) const;

    const std::string& m_text;
    const int m_maxDepth;

    std::size_t m_pos = 0;
    int m_depth = 0;
    const char* m_reason = "";
    std::size_t m_offset = 0;
};
