#pragma once

#include "command.h"

#include <string>

// "tzparse schema DEFINITION": writes the variables that a definition yields, as the document that
// CAppVariableDef::Save makes of them.
class CSchemaCommand : public ICommand {
public:
    explicit CSchemaCommand(CLI::App& app);

    bool IsChosen() const override;
    ExitStatus_e Run(COutputWriter& out) const override;

private:
    CLI::App* m_command;
    std::string m_definition;
};
