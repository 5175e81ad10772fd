#include "diffcommand.h"

#include "host/json/jsontext.h"
#include "tzparser/engine/tzparser.h"
#include "tzparser/engine/valuediff.h"

#include "definitionfile.h"
#include "inputfile.h"
#include "jsonlayout.h"

#include <array>
#include <memory>

#include <CLI/CLI.hpp>

namespace {

struct KindWords {
    ValueChange_e kind;
    char mark;
    const char* word;
};

constexpr std::array<KindWords, 3> Kinds = {{
    {ValueChange_Changed, '~', "changed"},
    {ValueChange_Added, '+', "added"},
    {ValueChange_Removed, '-', "removed"},
}};

const KindWords& WordsOf(ValueChange_e kind) {
    for (const auto& row : Kinds)
        if (row.kind == kind) return row;
    return Kinds.front();
}

std::string Shown(const std::optional<std::string>& text) {
    return text ? hxJson::QuoteJson(*text) : std::string("nothing");
}

// One line a change: "~ uptime: "3" -> "4"", "+ interfaces [name="Gi0/1"] status="up"".
void WriteLine(const ValueChange& change, std::string& out) {
    out.push_back(WordsOf(change.kind).mark);
    out.append(" ").append(change.variable);
    if (!change.keys.empty()) {
        out += " [";
        for (std::size_t i = 0; i < change.keys.size(); ++i)
            out.append(i == 0 ? "" : ", ")
                .append(change.keys[i].first)
                .append("=")
                .append(hxJson::QuoteJson(change.keys[i].second));
        out += "]";
    }
    const char* separator = change.keys.empty() ? ": " : " ";
    for (const auto& cell : change.cells) {
        out += separator;
        separator = ", ";
        if (change.kind != ValueChange_Changed) {
            out += cell.column + "=" + Shown(cell.before ? cell.before : cell.after);
            continue;
        }
        if (!cell.column.empty()) out += cell.column + ": ";
        out += Shown(cell.before) + " -> " + Shown(cell.after);
    }
    out += "\n";
}

void WriteLines(const std::vector<ValueChange>& changes, COutputWriter& out) {
    for (const auto& change : changes) {
        WriteLine(change, out.Buffer());
        out.Drain();
    }
}

void WriteText(CJsonLayout& json, const char* key, const std::optional<std::string>& text) {
    json.Key(key);
    json.Value() += text ? hxJson::QuoteJson(*text) : "null";
}

void WriteCells(CJsonLayout& json, const ValueChange& change) {
    json.Key("cells");
    json.Begin('[');
    for (const auto& cell : change.cells) {
        json.Begin('{');
        WriteText(json, "column", cell.column);
        WriteText(json, "old", cell.before);
        WriteText(json, "new", cell.after);
        json.End();
    }
    json.End();
}

void WriteChange(CJsonLayout& json, const ValueChange& change) {
    json.Begin('{');
    WriteText(json, "kind", std::string(WordsOf(change.kind).word));
    WriteText(json, "variable", change.variable);
    if (change.keys.empty()) {
        WriteText(json, "old", change.cells.front().before);
        WriteText(json, "new", change.cells.front().after);
    } else {
        json.Key("keys");
        json.Begin('{');
        for (const auto& [name, text] : change.keys) WriteText(json, name.c_str(), text);
        json.End();
        WriteCells(json, change);
    }
    json.Key("oldLine");
    json.Value() += change.beforeLine < 0 ? "null" : std::to_string(change.beforeLine);
    json.Key("newLine");
    json.Value() += change.afterLine < 0 ? "null" : std::to_string(change.afterLine);
    json.End();
}

void WriteJson(const std::vector<ValueChange>& changes, COutputWriter& out) {
    CJsonLayout json(out);
    json.Begin('[');
    for (const auto& change : changes) WriteChange(json, change);
    json.End();
}

std::shared_ptr<CAppVariableValue> ParseFile(CTzParser& parser, const std::string& name) {
    std::string error;
    auto values = parser.Parse(ReadInput(name), error);
    if (!values) throw CToolError(ExitStatus_Unusable, name + ": " + error);
    return values;
}

}  // namespace

CDiffCommand::CDiffCommand(CLI::App& app)
    : m_command(app.add_subcommand("diff", "Tell what changed between two texts of one command")),
      m_format("text") {
    const auto add = [this](const char* name, std::string& value, const char* help) {
        m_command->add_option(name, value, help)->required()->option_text(" ");
    };
    add("DEFINITION", m_definition, "The parser definition; - is standard input");
    add("OLD", m_before, "The earlier text; - is standard input");
    add("NEW", m_after, "The later text; - is standard input");
    m_command
        ->add_option("--format", m_format, "text: a line a change, the default; json: for programs")
        ->check(CLI::IsMember({"text", "json"}))
        ->option_text("text|json");
}

bool CDiffCommand::IsChosen() const {
    return m_command->parsed();
}

ExitStatus_e CDiffCommand::Run(COutputWriter& out) const {
    int streams = 0;
    for (const auto& name : {m_definition, m_before, m_after})
        streams += name == StandardInput ? 1 : 0;
    if (streams > 1)
        throw CToolError(ExitStatus_Unusable,
                         "only one of DEFINITION, OLD and NEW can be standard input");
    CTzParser parser;
    parser.SetParser(ReadDefinition(m_definition));
    const auto before = ParseFile(parser, m_before);
    const auto after = ParseFile(parser, m_after);
    const auto changes = CValueDiff::Compare(*before, *after);
    if (m_format == "json")
        WriteJson(changes, out);
    else
        WriteLines(changes, out);
    return changes.empty() ? ExitStatus_Ok : ExitStatus_Failed;
}
