#pragma once

#include "command.h"

#include <string>

// "tzparse convert FILE --to json|xml": turns rule documents from one form into the other and lists
// on standard error what the other can't hold. The exit status is 0 when nothing is lost, 1 when
// something is, 2 for trouble.
class CConvertCommand : public ICommand {
public:
    explicit CConvertCommand(CLI::App& app);

    bool IsChosen() const override;
    ExitStatus_e Run(COutputWriter& out) const override;

private:
    CLI::App* m_command;
    std::string m_file;
    std::string m_form;
    std::string m_output;
    int m_sample = 0;
};
