// The page is the head, the data and the tail. Head and tail are made of page/* when the program is
// built: "ExplainPageHead" ends inside the open script element of the data, "ExplainPageTail"
// begins with its end.
#include "explainpage.h"

#include "host/json/jsontext.h"

#include "choiceformat.h"
#include "explainpageparts.h"
#include "jsonlayout.h"

#include <array>
#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

struct Harmful {
    std::string_view bytes;
    std::string_view escape;
};

constexpr std::array<Harmful, 5> Harmfuls = {{{"<", "\\u003c"},
                                              {">", "\\u003e"},
                                              {"&", "\\u0026"},
                                              {"\xE2\x80\xA8", "\\u2028"},
                                              {"\xE2\x80\xA9", "\\u2029"}}};

constexpr std::string_view LatinEscape = "\\u00";
constexpr std::string_view LoneSurrogate = "\\udc";
constexpr std::size_t ShortEscapeLength = 2;

// Whether the escape at the begin of `json` is one of "\u0080" to "\u00ff". Only bytes that are no
// UTF-8 are written so.
bool IsByteEscape(std::string_view json) {
    return json.compare(0, LatinEscape.size(), LatinEscape) == 0 &&
           json.size() > LatinEscape.size() && json[LatinEscape.size()] >= '8';
}

// Appends the escape at the begin of `json` and gives its length in `json`.
std::size_t AppendEscape(std::string& out, std::string_view json) {
    if (IsByteEscape(json)) {
        out += LoneSurrogate;
        return LatinEscape.size();
    }
    out += json.substr(0, ShortEscapeLength);
    return ShortEscapeLength;
}

// Appends what may stand at the begin of `json` and gives how much of it that was.
std::size_t AppendHarmless(std::string& out, std::string_view json) {
    for (const auto& harmful : Harmfuls) {
        if (json.compare(0, harmful.bytes.size(), harmful.bytes) != 0) continue;
        out += harmful.escape;
        return harmful.bytes.size();
    }
    out += json.front();
    return 1;
}

std::size_t AppendNext(std::string& out, std::string_view json) {
    return json.front() == '\\' ? AppendEscape(out, json) : AppendHarmless(out, json);
}

// Numbers texts in the order in which they first come. The texts have to outlive it.
class CTextNumbers {
public:
    std::size_t NumberOf(std::string_view text) {
        const auto added = m_numbers.emplace(text, m_texts.size());
        if (added.second) m_texts.push_back(text);
        return added.first->second;
    }

    const std::vector<std::string_view>& Texts() const { return m_texts; }

private:
    std::unordered_map<std::string_view, std::size_t> m_numbers;
    std::vector<std::string_view> m_texts;
};

// Takes `piece` off the begin of `text`; false when it doesn't begin so.
bool Take(std::string_view& text, std::string_view piece) {
    if (text.compare(0, piece.size(), piece) != 0) return false;
    text.remove_prefix(piece.size());
    return true;
}

bool HasPlace(const ExplainValue& value, std::size_t lineCount) {
    return value.beginRow >= 0 && value.beginRow <= value.endRow && value.beginCol >= 0 &&
           value.endCol >= 0 && static_cast<std::size_t>(value.endRow) < lineCount &&
           (value.beginRow < value.endRow || value.beginCol < value.endCol);
}

// Whether the lines, joined by line feeds, have the value's text where it says it stands.
bool StandsInPlace(const ExplainValue& value, const std::vector<std::string>& lines) {
    if (!HasPlace(value, lines.size())) return false;
    std::string_view left = value.text;
    for (auto row = value.beginRow; row <= value.endRow; ++row) {
        std::string_view piece = lines[static_cast<std::size_t>(row)];
        if (row == value.endRow) {
            if (static_cast<std::size_t>(value.endCol) > piece.size()) return false;
            piece = piece.substr(0, static_cast<std::size_t>(value.endCol));
        }
        if (row == value.beginRow) {
            if (static_cast<std::size_t>(value.beginCol) > piece.size()) return false;
            piece.remove_prefix(static_cast<std::size_t>(value.beginCol));
        }
        if (row != value.beginRow && !Take(left, "\n")) return false;
        if (!Take(left, piece)) return false;
    }
    return left.empty();
}

class CPageData {
public:
    CPageData(const ExplainReport& report, COutputWriter& out) : m_report(report), m_json(out) {}

    void Write(const ExplainPageNames& names) {
        m_json.Begin('{');
        WriteText("definition", names.definition);
        WriteText("textName", names.text);
        WriteTexts("choice", ChoiceLines(m_report.choice));
        WriteFlag("parsed", m_report.isParsed);
        WriteText("error", m_report.error);
        WriteTexts("lines", m_report.lines);
        WriteRules();
        WriteValues();
        WriteTexts("names", m_names.Texts());
        WriteTexts("types", m_types.Texts());
        m_json.End();
    }

private:
    void WriteText(std::string_view key, std::string_view text) {
        m_json.Key(key);
        AppendPageString(m_json.Value(), text);
    }

    void WriteNumber(std::string_view key, int number) {
        m_json.Key(key);
        m_json.Value() += std::to_string(number);
    }

    void WriteFlag(std::string_view key, bool flag) {
        m_json.Key(key);
        m_json.Value() += flag ? "true" : "false";
    }

    template <class Texts>
    void WriteTexts(std::string_view key, const Texts& texts) {
        m_json.Key(key);
        m_json.Begin('[');
        for (const auto& text : texts) AppendPageString(m_json.Value(), text);
        m_json.End();
    }

    void WriteRules() {
        m_json.Key("rules");
        m_json.Begin('[');
        for (const auto& rule : m_report.rules) WriteRule(rule);
        m_json.End();
    }

    void WriteRule(const ExplainRule& rule) {
        m_json.Begin('{');
        WriteNumber("parent", rule.parent);
        WriteText("kind", rule.kind);
        WriteText("name", rule.name);
        WriteText("path", rule.path);
        WriteFlag("ran", rule.hasRun);
        WriteNumber("begin", rule.beginLine);
        WriteNumber("end", rule.endLine);
        WriteNumber("open", rule.openLines);
        WriteRanges(rule.ranges);
        m_json.Key("facts");
        m_json.Begin('[');
        for (const auto& fact : rule.facts) WriteFact(fact);
        m_json.End();
        m_json.End();
    }

    void WriteRanges(const std::vector<std::pair<int, int>>& ranges) {
        m_json.Key("ranges");
        m_json.Begin('[');
        for (const auto& range : ranges) {
            m_json.Value() +=
                "[" + std::to_string(range.first) + "," + std::to_string(range.second) + "]";
        }
        m_json.End();
    }

    void WriteFact(const ExplainFact& fact) {
        m_json.Begin('{');
        WriteText("text", fact.text);
        WriteNumber("line", fact.line);
        WriteNumber("column", fact.column);
        WriteFlag("trouble", fact.isTrouble);
        WriteText("statement", fact.statement);
        WriteNumber("caret", fact.statementColumn);
        m_json.End();
    }

    void WriteValues() {
        m_json.Key("values");
        m_json.Begin('[');
        for (const auto& value : m_report.values) AppendValue(m_json.Value(), value);
        m_json.End();
    }

    void AppendValue(std::string& out, const ExplainValue& value) {
        const auto name = static_cast<int>(m_names.NumberOf(value.name));
        const auto type = static_cast<int>(m_types.NumberOf(value.type));
        char before = '[';
        for (const auto number : {value.rule, name, value.index, type, value.beginRow,
                                  value.beginCol, value.endRow, value.endCol}) {
            out.append(1, before).append(std::to_string(number));
            before = ',';
        }
        if (!StandsInPlace(value, m_report.lines)) {
            out += ',';
            AppendPageString(out, value.text);
        }
        out += ']';
    }

    const ExplainReport& m_report;
    CJsonLayout m_json;
    CTextNumbers m_names;
    CTextNumbers m_types;
};

}  // namespace

void AppendPageString(std::string& out, std::string_view bytes) {
    std::string quoted;
    hxJson::AppendQuotedJson(quoted, bytes);
    for (std::string_view left = quoted; !left.empty();) left.remove_prefix(AppendNext(out, left));
}

void WriteExplainPage(const ExplainReport& report, const ExplainPageNames& names,
                      COutputWriter& out) {
    out.Buffer() += ExplainPageHead;
    CPageData(report, out).Write(names);
    out.Buffer() += ExplainPageTail;
    out.Drain();
}
