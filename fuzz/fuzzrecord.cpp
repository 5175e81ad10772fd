// Any bytes as a record of a result. Reading ends with an answer or with one of the exceptions that
// are told of; what can be read by name is what the whole record has under that name.
#include "tzparser/engine/parserhelper.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <typeinfo>

#include <msgpack/unpack.hpp>

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

// Whether the head of the record could be read.
bool CheckInfo(const std::string& record) {
    std::string header = "before";
    hxJson::Value offsets = 7;
    int dataStart = -1;
    try {
        if (!CParserHelper::GetParserInfo(record, header, offsets, dataStart)) {
            Require(header.empty());
            return false;
        }
        Require(dataStart > 0 && static_cast<std::size_t>(dataStart) <= record.size());
        Require(header.size() < record.size());
        return true;
    } catch (const msgpack::type_error&) {
    } catch (const msgpack::unpack_error&) {
    }
    Require(header == "before" && offsets.asInt() == 7 && dataStart == -1);
    return false;
}

void CheckMembers(const std::string& record, const hxJson::Value& whole, const std::string& path) {
    for (const auto& name : whole.getMemberNames()) {
        const auto full = path + name;
        hxJson::Value value;
        std::string error;
        // A name with dots, or one that two elements have, may name another element.
        const bool isRead = CParserHelper::ReadVariable(record, full, value, error);
        Require(isRead == error.empty());
        if (whole[name].isObject()) CheckMembers(record, whole[name], full + ".");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string record(reinterpret_cast<const char*>(data), size);
    const bool hasHead = CheckInfo(record);
    hxJson::Value whole = 7;
    std::string error;
    if (!CParserHelper::RecordToJson(record, whole, error)) {
        Require(!error.empty() && whole.asInt() == 7);
        return 0;
    }
    Require(hasHead && error.empty());
    Require(whole.isObject() || whole.isArray());
    // Each look-up reads the head again, so a record with many names takes the square of its size.
    if (size < 2048) CheckMembers(record, whole, "");
    return 0;
}
