#include "schemacommand.h"

#include "tzparser/engine/tzparser.h"

#include "definitionfile.h"

#include <CLI/CLI.hpp>

CSchemaCommand::CSchemaCommand(CLI::App& app)
    : m_command(app.add_subcommand("schema", "Print the variables that a definition yields")) {
    m_command->add_option("DEFINITION", m_definition, "The parser definition; - is standard input")
        ->required()
        ->option_text(" ");
}

bool CSchemaCommand::IsChosen() const {
    return m_command->parsed();
}

ExitStatus_e CSchemaCommand::Run(COutputWriter& out) const {
    CTzParser parser;
    parser.SetParser(ReadDefinition(m_definition));
    const auto tree = parser.GetVariableTree();
    hxJson::Value saved;
    if (tree) tree->Save(saved);
    out.Buffer() += saved.toStyledString();
    return ExitStatus_Ok;
}
