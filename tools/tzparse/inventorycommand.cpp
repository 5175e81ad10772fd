#include "inventorycommand.h"

#include "host/store/inventory.h"
#include "host/store/inventorycsv.h"

#include "inputfile.h"

#include <filesystem>
#include <sstream>

#include <CLI/CLI.hpp>

CInventoryCommand::CInventoryCommand(CLI::App& app) : m_folder(DefaultInventoryFolder) {
    auto* command = app.add_subcommand("inventory", "Work on the inventory of interfaces");
    command->require_subcommand(1);
    m_import = command->add_subcommand("import", "Fill a tenant from a CSV file");
    m_import
        ->add_option("FILE", m_file,
                     "Lines of device,interface,ip behind a header line; - is standard input")
        ->required()
        ->option_text(" ");
    m_import->add_option("--tenant", m_tenant, "The tenant to fill")
        ->required()
        ->option_text("NAME");
    m_import
        ->add_option("--inventory", m_folder,
                     "The folder of the inventories, \"inventory\" by default")
        ->option_text("FOLDER");
}

bool CInventoryCommand::IsChosen() const {
    return m_import->parsed();
}

ExitStatus_e CInventoryCommand::Run(COutputWriter& out) const {
    std::istringstream text(ReadInput(m_file));
    std::error_code made;
    std::filesystem::create_directories(m_folder, made);
    SetInventoryFolder(m_folder);
    std::string error;
    InventoryCsvCounts counts;
    if (!ImportInventoryCsv(*GetInventory(), m_tenant, text, error, counts))
        throw CToolError(ExitStatus_Unusable, m_file + ": " + error);
    out.Buffer() += std::to_string(counts.rows) + " interfaces, " +
                    std::to_string(counts.addresses) + " addresses\n";
    return ExitStatus_Ok;
}
