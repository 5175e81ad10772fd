#include "convertcommand.h"

#include "tzparser/convert/tzconvert.h"

#include "definitionfile.h"
#include "inputfile.h"
#include "outputfile.h"

#include <optional>

#include <CLI/CLI.hpp>
#include <unistd.h>

namespace {

void Write(const std::string& text, COutputWriter& out) {
    out.Buffer() += text;
    out.Finish();
}

// Behind the document, so that what is told of it is told of a document that is there.
void WriteLosses(const ConversionLosses& losses) {
    COutputWriter words(STDERR_FILENO);
    for (const auto& loss : losses) {
        words.Buffer().append(loss.place).append(": ").append(loss.reason).append("\n");
        words.Drain();
    }
    words.Finish();
}

}  // namespace

CConvertCommand::CConvertCommand(CLI::App& app)
    : m_command(app.add_subcommand("convert", "Turn rule documents from JSON into XML or back")) {
    m_command
        ->add_option("FILE", m_file,
                     "A parser definition or rule document, or rules in XML; - is standard input")
        ->required()
        ->option_text(" ");
    m_command->add_option("--to", m_form, "The form to turn it into")
        ->required()
        ->check(CLI::IsMember({"json", "xml"}))
        ->option_text("json|xml");
    m_command
        ->add_option("--sample", m_sample,
                     "The number of the sample, where a definition has several")
        ->option_text("N");
    m_command->add_option("-o,--output", m_output, "Write to this file instead of standard output")
        ->option_text("FILE");
}

bool CConvertCommand::IsChosen() const {
    return m_command->parsed();
}

ExitStatus_e CConvertCommand::Run(COutputWriter& out) const {
    const bool toXml = m_form == "xml";
    const bool hasSample = m_command->count("--sample") > 0;
    if (hasSample && !toXml)
        throw CToolError(ExitStatus_Unusable, "--sample goes with --to xml alone");
    const auto sample = hasSample ? std::optional<int>(m_sample) : std::nullopt;
    const auto conversion = toXml ? CTzConvert::ToXml(ReadDefinition(m_file), sample)
                                  : CTzConvert::ToJson(ReadInput(m_file));
    if (!conversion.error.empty()) {
        const std::string name = m_file == StandardInput ? "standard input" : m_file;
        throw CToolError(ExitStatus_Unusable, name + ": " + conversion.error);
    }
    if (m_output.empty()) {
        Write(conversion.text, out);
    } else {
        const COutputFile file(m_output);
        COutputWriter writer(file.Descriptor());
        Write(conversion.text, writer);
    }
    WriteLosses(conversion.losses);
    return conversion.losses.empty() ? ExitStatus_Ok : ExitStatus_Failed;
}
