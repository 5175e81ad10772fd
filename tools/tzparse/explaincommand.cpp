#include "explaincommand.h"

#include "tzparser/explain/tzexplain.h"

#include "definitionfile.h"
#include "explainformat.h"
#include "explainpage.h"
#include "inputfile.h"
#include "outputfile.h"

#include <CLI/CLI.hpp>

CExplainCommand::CExplainCommand(CLI::App& app)
    : m_command(app.add_subcommand("explain", "Tell what each rule does with a text, and why")) {
    m_command->add_option("DEFINITION", m_definition, "The parser definition; - is standard input")
        ->required()
        ->option_text(" ");
    m_command->add_option("TEXT", m_text, "The text; - is standard input")
        ->required()
        ->option_text(" ");
    m_command
        ->add_option("--html", m_page,
                     "Write a page for a browser instead, with the values in the text")
        ->option_text("FILE");
}

bool CExplainCommand::IsChosen() const {
    return m_command->parsed();
}

ExitStatus_e CExplainCommand::Run(COutputWriter& out) const {
    if (m_definition == StandardInput && m_text == StandardInput)
        throw CToolError(ExitStatus_Unusable,
                         "only one of DEFINITION and TEXT can be standard input");
    const auto report = CTzExplain::Explain(ReadDefinition(m_definition), ReadInput(m_text));
    if (m_page.empty())
        WriteExplanation(report, out);
    else
        WritePage(report);
    return report.isParsed && CountTroubles(report) == 0 ? ExitStatus_Ok : ExitStatus_Failed;
}

void CExplainCommand::WritePage(const ExplainReport& report) const {
    COutputFile file(m_page);
    COutputWriter page(file.Descriptor());
    WriteExplainPage(report, {m_definition, m_text}, page);
    page.Finish();
}
