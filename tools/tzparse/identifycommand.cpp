#include "identifycommand.h"

#include "tzparser/engine/tzparser.h"

#include "choiceformat.h"
#include "definitionfile.h"
#include "inputfile.h"

#include <map>

#include <CLI/CLI.hpp>

namespace {

using WriteFormat = void (*)(const SampleChoice&, COutputWriter&);

const std::map<std::string, WriteFormat>& Formats() {
    static const std::map<std::string, WriteFormat> formats = {{"text", &WriteChoice},
                                                               {"json", &WriteChoiceJson}};
    return formats;
}

}  // namespace

CIdentifyCommand::CIdentifyCommand(CLI::App& app)
    : m_command(app.add_subcommand("identify", "Tell which sample reads a text, and why")),
      m_format("text") {
    m_command->add_option("DEFINITION", m_definition, "The parser definition; - is standard input")
        ->required()
        ->option_text(" ");
    m_command->add_option("TEXT", m_text, "The text; - is standard input")
        ->required()
        ->option_text(" ");
    m_command->add_option("--format", m_format, "text: for people, the default; json: for programs")
        ->check(CLI::IsMember(&Formats()))
        ->option_text("text|json");
}

bool CIdentifyCommand::IsChosen() const {
    return m_command->parsed();
}

ExitStatus_e CIdentifyCommand::Run(COutputWriter& out) const {
    if (m_definition == StandardInput && m_text == StandardInput)
        throw CToolError(ExitStatus_Unusable,
                         "only one of DEFINITION and TEXT can be standard input");
    CTzParser parser;
    parser.SetParser(ReadDefinition(m_definition));
    const auto choice = parser.Identify(ReadInput(m_text));
    Formats().at(m_format)(choice, out);
    return choice.reason == SampleChoice_None ? ExitStatus_Failed : ExitStatus_Ok;
}
