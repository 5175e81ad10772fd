#include "tzparser/convert/conversionplace.h"

#include "host/json/jsontext.h"
#include "host/text/asciicase.h"

#include <algorithm>

namespace {

constexpr std::size_t MaxShownKey = 60;
constexpr std::size_t MaxShownPath = 400;

bool IsPlain(const std::string& key) {
    return !key.empty() && key.size() <= MaxShownKey &&
           std::all_of(key.begin(), key.end(),
                       [](char c) { return AsciiIsAlnum(c) || c == '_' || c == '@' || c == '-'; });
}

}  // namespace

std::string MemberPath(const std::string& path, const std::string& key) {
    if (!IsPlain(key)) return path + "[" + hxJson::QuoteJson(key.substr(0, MaxShownKey)) + "]";
    return path.empty() ? key : path + "." + key;
}

std::string ElementPath(const std::string& path, std::size_t index) {
    return path + "[" + std::to_string(index) + "]";
}

std::string ShownPath(const std::string& path) {
    if (path.size() <= MaxShownPath) return path;
    return path.substr(0, MaxShownPath / 2) + "..." + path.substr(path.size() - MaxShownPath / 2);
}
