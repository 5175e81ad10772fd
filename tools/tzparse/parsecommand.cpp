#include "parsecommand.h"

#include "host/store/inventory.h"
#include "tzparser/engine/parserhelper.h"
#include "tzparser/engine/tzparser.h"
#include "tzparser/rule/appparserule.h"

#include "definitionfile.h"
#include "inputfile.h"
#include "inventorycommand.h"
#include "recordformat.h"
#include "resultformat.h"
#include "treeformat.h"
#include "valueformat.h"

#include <exception>
#include <map>
#include <memory>

#include <CLI/CLI.hpp>

namespace {

constexpr const char* AccessType = "accessType";

// A format shows either the values of a parse or what the rules that were run say of themselves.
struct Format {
    void (*writeValues)(const CAppVariableValue&, COutputWriter&);
    void (*writeRules)(CAppParseRule&, COutputWriter&);
};

const std::map<std::string, Format>& Formats() {
    static const std::map<std::string, Format> formats = {{"json", {&WriteValues, nullptr}},
                                                          {"tree", {&WriteTree, nullptr}},
                                                          {"record", {&WriteRecord, nullptr}},
                                                          {"result", {nullptr, &WriteResultJson}},
                                                          {"xml", {nullptr, &WriteResultXml}}};
    return formats;
}

std::shared_ptr<CAppVariableValue> ParseValues(CTzParser& parser, const std::string& text) {
    std::string error;
    auto values = parser.Parse(text, error);
    if (!values) throw CToolError(ExitStatus_Failed, error);
    return values;
}

std::shared_ptr<CAppParseRule> RunRules(CTzParser& parser, const std::string& text) {
    std::string error;
    auto rules = parser.GetSampleParseRuleClone(text, error);
    if (!rules) throw CToolError(ExitStatus_Failed, error);
    try {
        if (rules->Parse(text, 0, -1, nullptr)) return rules;
        error = rules->GetLastError();
    } catch (const std::exception& exception) {
        error = exception.what();
    }
    throw CToolError(ExitStatus_Failed, "parse failed when using parser rules. reseason:" + error);
}

}  // namespace

CParseCommand::CParseCommand(CLI::App& app)
    : m_command(app.add_subcommand("parse", "Parse a text and print its values")),
      m_format("json"),
      m_inventory(DefaultInventoryFolder) {
    m_command->add_option("DEFINITION", m_definition, "The parser definition; - is standard input")
        ->required()
        ->option_text(" ");
    m_command->add_option("TEXT", m_text, "The text to parse; - is standard input")
        ->required()
        ->option_text(" ");
    m_command
        ->add_option(
            "--format", m_format,
            "json: typed values, the default; tree: all nodes with spans; result, xml: what "
            "each rule found, as JSON and as XML")
        ->check(CLI::IsMember(&Formats()))
        ->option_text("json|tree|record|result|xml");
    m_command
        ->add_option("--access", m_access,
                     "Use N as the definition's accessType; 16 adds the built-in properties")
        ->option_text("N");
    m_command
        ->add_option("--script-limit", m_scriptLimit,
                     "Interrupt a script rule that runs longer than MS milliseconds; 0, the "
                     "default, is no limit")
        ->check(CLI::NonNegativeNumber)
        ->option_text("MS");
    m_command
        ->add_option("--device", m_device,
                     "Write interface names of tables in full, as the inventory has this device")
        ->option_text("ID");
    m_command->add_option("--tenant", m_tenant, "The tenant whose inventory knows the device")
        ->option_text("NAME");
    m_command
        ->add_option("--inventory", m_inventory,
                     "The folder of the inventories, \"inventory\" by default")
        ->option_text("FOLDER");
}

bool CParseCommand::IsChosen() const {
    return m_command->parsed();
}

// The text is gone before the output is made: only one of them needs the memory at a time.
ExitStatus_e CParseCommand::Run(COutputWriter& out) const {
    if (m_definition == StandardInput && m_text == StandardInput)
        throw CToolError(ExitStatus_Unusable,
                         "only one of DEFINITION and TEXT can be standard input");
    auto definition = ReadDefinition(m_definition);
    if (m_access && definition.isObject()) definition[AccessType] = *m_access;
    CTzParser parser;
    parser.SetParser(definition);
    parser.SetScriptTimeLimit(m_scriptLimit);
    const auto& format = Formats().at(m_format);
    if (format.writeRules != nullptr) {
        format.writeRules(*RunRules(parser, ReadInput(m_text)), out);
        return ExitStatus_Ok;
    }
    const auto values = ParseValues(parser, ReadInput(m_text));
    SetInventoryFolder(m_inventory);
    CParserHelper::ProcessAllInterfaceNameToFullName(values.get(), m_device, m_tenant);
    format.writeValues(*values, out);
    return ExitStatus_Ok;
}
