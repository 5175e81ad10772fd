#pragma once

#include "command.h"

#include <string>

// "tzparse identify DEFINITION TEXT": writes which sample reads a text, and which condition kept
// each sample tried before from it.
class CIdentifyCommand : public ICommand {
public:
    explicit CIdentifyCommand(CLI::App& app);

    bool IsChosen() const override;
    // ExitStatus_Failed when the definition has no sample.
    ExitStatus_e Run(COutputWriter& out) const override;

private:
    CLI::App* m_command;
    std::string m_definition;
    std::string m_text;
    std::string m_format;
};
