#pragma once

#include "command.h"

#include <string>

// "tzparse explain DEFINITION TEXT": writes what each rule of a definition did with a text, and how
// near the statements came that match nothing.
class CExplainCommand : public ICommand {
public:
    explicit CExplainCommand(CLI::App& app);

    bool IsChosen() const override;
    // ExitStatus_Failed when the author should look at something.
    ExitStatus_e Run(COutputWriter& out) const override;

private:
    CLI::App* m_command;
    std::string m_definition;
    std::string m_text;
};
