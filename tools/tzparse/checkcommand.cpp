#include "checkcommand.h"

#include "tzparser/check/definitioncheck.h"

#include "inputfile.h"

#include <CLI/CLI.hpp>

CCheckCommand::CCheckCommand(CLI::App& app)
    : m_command(app.add_subcommand("check", "Tell what is wrong with a definition")) {
    m_command->add_option("DEFINITION", m_definition, "The parser definition; - is standard input")
        ->required()
        ->option_text(" ");
}

bool CCheckCommand::IsChosen() const {
    return m_command->parsed();
}

ExitStatus_e CCheckCommand::Run(COutputWriter& out) const {
    const auto findings = CTzDefinitionCheck::Check(ReadInput(m_definition));
    for (const auto& finding : findings) {
        out.Buffer() += CTzDefinitionCheck::Format(finding);
        out.Drain();
    }
    if (!findings.empty()) return ExitStatus_Failed;
    out.Buffer() += "ok\n";
    return ExitStatus_Ok;
}
