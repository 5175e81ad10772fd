#include "program.h"

#include "checkcommand.h"
#include "convertcommand.h"
#include "diffcommand.h"
#include "explaincommand.h"
#include "identifycommand.h"
#include "inventorycommand.h"
#include "parsecommand.h"
#include "recordcommand.h"
#include "schemacommand.h"

#include <exception>
#include <iostream>
#include <memory>
#include <new>
#include <sstream>
#include <vector>

#include <CLI/CLI.hpp>
#include <unistd.h>

namespace {

constexpr const char* Version = "tzparse " TZPARSE_VERSION;
constexpr const char* VersionFlags = "-V,--version";
constexpr const char* VersionHelp = "Print the version and exit";

using Commands = std::vector<std::unique_ptr<ICommand>>;

Commands MakeCommands(CLI::App& app) {
    Commands commands;
    commands.push_back(std::make_unique<CParseCommand>(app));
    commands.push_back(std::make_unique<CSchemaCommand>(app));
    commands.push_back(std::make_unique<CIdentifyCommand>(app));
    commands.push_back(std::make_unique<CCheckCommand>(app));
    commands.push_back(std::make_unique<CExplainCommand>(app));
    commands.push_back(std::make_unique<CDiffCommand>(app));
    commands.push_back(std::make_unique<CRecordCommand>(app));
    commands.push_back(std::make_unique<CConvertCommand>(app));
    commands.push_back(std::make_unique<CInventoryCommand>(app));
    app.set_version_flag(VersionFlags, Version, VersionHelp);
    for (auto* command : app.get_subcommands(nullptr))
        command->set_version_flag(VersionFlags, Version, VersionHelp);
    app.require_subcommand(1);
    return commands;
}

// The library itself would call an unknown command a missing one.
std::string Complaint(const CLI::App& app, const CLI::ParseError& error) {
    const auto unknown = app.remaining();
    if (!app.get_subcommands().empty() || unknown.empty()) return error.what();
    return "there is no command or option '" + unknown.front() + "'";
}

// What the command line library throws is either a wish for help or version, or bad usage.
ExitStatus_e Answer(const CLI::App& app, const CLI::ParseError& error, COutputWriter& out) {
    if (error.get_exit_code() != 0)
        throw CToolError(ExitStatus_Unusable, Complaint(app, error) + "\nTry 'tzparse --help'.");
    std::ostringstream words;
    app.exit(error, words, words);
    out.Buffer() += words.str();
    return ExitStatus_Ok;
}

ExitStatus_e Dispatch(int argumentCount, const char* const* arguments, COutputWriter& out) {
    CLI::App app("Turns the text that network devices print into typed, addressed values.",
                 "tzparse");
    const auto commands = MakeCommands(app);
    try {
        app.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        return Answer(app, error, out);
    }
    for (const auto& command : commands)
        if (command->IsChosen()) return command->Run(out);
    return ExitStatus_Unusable;
}

int Complain(ExitStatus_e status, const char* words) {
    std::cerr << "tzparse: " << words << std::endl;
    return status;
}

}  // namespace

int RunProgram(int argumentCount, const char* const* arguments) {
    try {
        COutputWriter out(STDOUT_FILENO);
        const auto status = Dispatch(argumentCount, arguments, out);
        out.Finish();
        return status;
    } catch (const CToolError& error) {
        return Complain(error.Status(), error.what());
    } catch (const std::bad_alloc&) {
        return Complain(ExitStatus_Unusable, "out of memory");
    } catch (const std::exception& error) {
        return Complain(ExitStatus_Unusable, error.what());
    }
}
