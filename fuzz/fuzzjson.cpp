// Any bytes go through the JSON reader. What is read must come back the same from both written
// forms, and the tree's copy, comparison, conversions and key-lowering copy must take it. What is
// refused must leave null and say where.

#include "host/json/hxjson.h"
#include "host/json/hxlower.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

// A byte that is not UTF-8 is written as the character of its number, so what was read comes back
// with such bytes changed; what was written once comes back the same.
void CheckWritten(const std::string& text) {
    hxJson::Value again;
    Require(hxJson::Reader().parse(text, again, true));
    const std::string written = again.toString();
    hxJson::Value third;
    Require(hxJson::Reader().parse(written, third, true));
    Require(third == again && third.toString() == written);
}

void CheckConversions(const hxJson::Value& value) {
    for (const hxJson::Value& element : value) {
        Require(element.asString() == element.asCString() ||
                element.asString().find('\0') != std::string::npos);
        Require(element.asBool() || !element.isInt() || element.asInt() == 0);
        Require(element.asInt() <= element.asInt64() || element.asInt64() < 0);
        Require(element.size() == 0 || !element.empty());
        static_cast<void>(element.asUInt64());
        static_cast<void>(element.asDouble());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    hxJson::Reader reader;
    hxJson::Value value;
    if (!reader.parse(text, value, true)) {
        Require(value.isNull() && reader.getErrorOffset() <= size);
        Require(reader.getErrorLine() > 0 && !reader.getErrorMessage().empty());
        return 0;
    }
    CheckWritten(value.toString());
    CheckWritten(value.toStyledString());
    const hxJson::Value copy(value);
    Require(copy == value);
    CheckConversions(value);
    hxJson::Value lowered;
    hxJson::CopyWithLowerKeys(value, lowered);
    Require(lowered.size() <= value.size());
    return 0;
}
