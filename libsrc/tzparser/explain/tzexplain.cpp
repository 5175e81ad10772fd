#include "tzparser/explain/tzexplain.h"

#include "tzparser/engine/tzparser.h"

ExplainReport CTzExplain::Explain(const hxJson::Value& definition, const std::string& text) {
    ExplainReport report;
    CTzParser parser;
    parser.SetParser(definition);
    report.choice = parser.Identify(text);
    report.isParsed = parser.Parse(text, report.error) != nullptr;
    return report;
}
