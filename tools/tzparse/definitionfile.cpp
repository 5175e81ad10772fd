#include "definitionfile.h"

#include "inputfile.h"
#include "toolerror.h"

namespace {

// The reader's message begins with its own form of the place.
std::string Reason(const hxJson::Reader& reader) {
    constexpr const char* placeEnd = ": ";
    const auto& message = reader.getErrorMessage();
    const auto end = message.find(placeEnd);
    return end == std::string::npos ? message : message.substr(end + 2);
}

}  // namespace

hxJson::Value ReadDefinition(const std::string& name) {
    hxJson::Value definition;
    hxJson::Reader reader;
    if (reader.parse(ReadInput(name), definition)) return definition;
    const std::string place = name == StandardInput ? "standard input" : name;
    throw CToolError(ExitStatus_Unusable, place + ":" + std::to_string(reader.getErrorLine()) +
                                              ":" + std::to_string(reader.getErrorColumn()) +
                                              ": not JSON: " + Reason(reader));
}
