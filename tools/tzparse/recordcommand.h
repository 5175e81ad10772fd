#pragma once

#include "command.h"

#include <string>

// "tzparse record FILE": prints a stored binary record as JSON, or one variable of it, which is
// read by its offset alone.
class CRecordCommand : public ICommand {
public:
    explicit CRecordCommand(CLI::App& app);

    bool IsChosen() const override;
    ExitStatus_e Run(COutputWriter& out) const override;

private:
    CLI::App* m_command;
    std::string m_file;
    std::string m_variable;
};
