#pragma once

#include "tzparser/explain/explainreport.h"

#include "command.h"

#include <string>

// "tzparse explain DEFINITION TEXT": writes what each rule of a definition did with a text, and how
// near the statements came that match nothing. With "--html FILE" it writes a page instead that
// shows the values in the text.
class CExplainCommand : public ICommand {
public:
    explicit CExplainCommand(CLI::App& app);

    bool IsChosen() const override;
    // ExitStatus_Failed when the author should look at something.
    ExitStatus_e Run(COutputWriter& out) const override;

private:
    void WritePage(const ExplainReport& report) const;

    CLI::App* m_command;
    std::string m_definition;
    std::string m_text;
    std::string m_page;
};
