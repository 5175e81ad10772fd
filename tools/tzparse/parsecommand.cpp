#include "parsecommand.h"

#include "tzparser/engine/tzparser.h"

#include "definitionfile.h"
#include "inputfile.h"
#include "treeformat.h"
#include "valueformat.h"

#include <map>

#include <CLI/CLI.hpp>

namespace {

constexpr const char* AccessType = "accessType";

using WriteFormat = void (*)(const CAppVariableValue&, COutputWriter&);

const std::map<std::string, WriteFormat>& Formats() {
    static const std::map<std::string, WriteFormat> formats = {{"json", &WriteValues},
                                                               {"tree", &WriteTree}};
    return formats;
}

}  // namespace

CParseCommand::CParseCommand(CLI::App& app)
    : m_command(app.add_subcommand("parse", "Parse a text and print its values")),
      m_format("json") {
    m_command->add_option("DEFINITION", m_definition, "The parser definition; - is standard input")
        ->required()
        ->option_text(" ");
    m_command->add_option("TEXT", m_text, "The text to parse; - is standard input")
        ->required()
        ->option_text(" ");
    m_command
        ->add_option("--format", m_format,
                     "json: typed values, the default; tree: all nodes with spans")
        ->check(CLI::IsMember(&Formats()))
        ->option_text("json|tree");
    m_command
        ->add_option("--access", m_access,
                     "Use N as the definition's accessType; 16 adds the built-in properties")
        ->option_text("N");
}

bool CParseCommand::IsChosen() const {
    return m_command->parsed();
}

// The text is gone before the output is made: only one of them needs the memory at a time.
ExitStatus_e CParseCommand::Run(COutputWriter& out) const {
    if (m_definition == StandardInput && m_text == StandardInput)
        throw CToolError(ExitStatus_Unusable,
                         "only one of DEFINITION and TEXT can be standard input");
    auto definition = ReadDefinition(m_definition);
    if (m_access && definition.isObject()) definition[AccessType] = *m_access;
    CTzParser parser;
    parser.SetParser(definition);
    std::string error;
    const auto values = parser.Parse(ReadInput(m_text), error);
    if (!values) throw CToolError(ExitStatus_Failed, error);
    Formats().at(m_format)(*values, out);
    return ExitStatus_Ok;
}
