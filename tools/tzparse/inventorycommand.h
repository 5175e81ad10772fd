#pragma once

#include "command.h"

#include <string>

// "tzparse inventory import FILE": fills the inventory of a tenant with devices, interfaces and
// addresses from a CSV file.
class CInventoryCommand : public ICommand {
public:
    explicit CInventoryCommand(CLI::App& app);

    bool IsChosen() const override;
    ExitStatus_e Run(COutputWriter& out) const override;

private:
    CLI::App* m_import;
    std::string m_file;
    std::string m_tenant;
    std::string m_folder;
};

// The folder that holds the inventories of tenants when none is named.
constexpr const char* DefaultInventoryFolder = "inventory";
