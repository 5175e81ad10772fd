#pragma once

#include "command.h"

#include <optional>
#include <string>

// "tzparse parse DEFINITION TEXT": parses a text and writes its values.
class CParseCommand : public ICommand {
public:
    explicit CParseCommand(CLI::App& app);

    bool IsChosen() const override;
    ExitStatus_e Run(COutputWriter& out) const override;

private:
    CLI::App* m_command;
    std::string m_definition;
    std::string m_text;
    std::string m_format;
    std::optional<int> m_access;
    int m_scriptLimit = 0;
    std::string m_device;
    std::string m_tenant;
    std::string m_inventory;
};
