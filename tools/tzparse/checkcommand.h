#pragma once

#include "command.h"

#include <string>

// "tzparse check DEFINITION": writes what an author should know about a definition.
class CCheckCommand : public ICommand {
public:
    explicit CCheckCommand(CLI::App& app);

    bool IsChosen() const override;
    // ExitStatus_Failed when anything was found.
    ExitStatus_e Run(COutputWriter& out) const override;

private:
    CLI::App* m_command;
    std::string m_definition;
};
