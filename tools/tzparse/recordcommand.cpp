#include "recordcommand.h"

#include "host/json/hxjson.h"
#include "tzparser/engine/parserhelper.h"

#include "inputfile.h"

#include <CLI/CLI.hpp>

CRecordCommand::CRecordCommand(CLI::App& app)
    : m_command(app.add_subcommand("record", "Print a binary record as JSON")) {
    m_command->add_option("FILE", m_file, "The record; - is standard input")
        ->required()
        ->option_text(" ");
    m_command
        ->add_option("--variable", m_variable,
                     "Print this variable alone, without reading the others")
        ->option_text("NAME");
}

bool CRecordCommand::IsChosen() const {
    return m_command->parsed();
}

ExitStatus_e CRecordCommand::Run(COutputWriter& out) const {
    const auto record = ReadInput(m_file);
    hxJson::Value value;
    std::string error;
    const bool isRead = m_variable.empty()
                            ? CParserHelper::RecordToJson(record, value, error)
                            : CParserHelper::ReadVariable(record, m_variable, value, error);
    if (!isRead) throw CToolError(ExitStatus_Failed, m_file + ": " + error);
    out.Buffer() += value.toStyledString();
    return ExitStatus_Ok;
}
