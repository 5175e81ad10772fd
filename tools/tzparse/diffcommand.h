#pragma once

#include "command.h"

#include <string>

// "tzparse diff DEFINITION OLD NEW": what changed between two texts of one command. The exit status
// is that of diff: 0 for nothing, 1 for changes, 2 for trouble, a text that can't be parsed among
// it.
class CDiffCommand : public ICommand {
public:
    explicit CDiffCommand(CLI::App& app);

    bool IsChosen() const override;
    ExitStatus_e Run(COutputWriter& out) const override;

private:
    CLI::App* m_command;
    std::string m_definition;
    std::string m_before;
    std::string m_after;
    std::string m_format;
};
