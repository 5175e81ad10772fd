#include "explaincommand.h"

#include "tzparser/explain/tzexplain.h"

#include "definitionfile.h"
#include "explainformat.h"
#include "inputfile.h"

#include <CLI/CLI.hpp>

CExplainCommand::CExplainCommand(CLI::App& app)
    : m_command(app.add_subcommand("explain", "Tell what each rule does with a text, and why")) {
    m_command->add_option("DEFINITION", m_definition, "The parser definition; - is standard input")
        ->required()
        ->option_text(" ");
    m_command->add_option("TEXT", m_text, "The text; - is standard input")
        ->required()
        ->option_text(" ");
}

bool CExplainCommand::IsChosen() const {
    return m_command->parsed();
}

ExitStatus_e CExplainCommand::Run(COutputWriter& out) const {
    if (m_definition == StandardInput && m_text == StandardInput)
        throw CToolError(ExitStatus_Unusable,
                         "only one of DEFINITION and TEXT can be standard input");
    const auto report = CTzExplain::Explain(ReadDefinition(m_definition), ReadInput(m_text));
    WriteExplanation(report, out);
    return report.isParsed && CountTroubles(report) == 0 ? ExitStatus_Ok : ExitStatus_Failed;
}
