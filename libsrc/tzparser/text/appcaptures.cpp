#include "tzparser/text/appcaptures.h"

namespace {

// The address expressions are long repetitions; the pieces that recur have a name each.

// clang-format off
#define TZ_OCTET R"re((?:25[0-5]|2[0-4][0-9]|1[0-9][0-9]|[0-9]{1,2}))re"
#define TZ_MASK R"re((?:255|254|252|248|240|224|192|128|0+))re"

constexpr std::string_view kIP =
    R"re(((?:)re" TZ_OCTET R"re(\.){3})re" TZ_OCTET
    R"re((?:/(?:3[0-2]|[12][0-9]|[0-9]))re"
    R"re(|(?:\s+(?:)re"
    R"re((?:255\.){3})re" TZ_MASK
    R"re(|(?:255\.){2})re" TZ_MASK R"re(\.0+)re"
    R"re(|(?:255\.))re" TZ_MASK R"re((?:\.0+){2})re"
    R"re(|)re" TZ_MASK R"re((?:\.0+){3})))?))re";

#define TZ_HEX R"re([\da-fA-F]{1,4})re"
#define TZ_V4_OCTET R"re((?:25[0-5]|2[0-4]\d|[01]?\d\d?))re"
#define TZ_V4 R"re((?:)re" TZ_V4_OCTET R"re(\.){3})re" TZ_V4_OCTET
#define TZ_BITS R"re((?:/(?:1[0-2][0-9]|[1-9][0-9]|[1-9]))?)re"

constexpr std::string_view kIPv6 =
    R"re(((?:(?:)re" TZ_HEX R"re(:){6})re" TZ_V4 TZ_BITS R"re())re"
    R"re(|(?:::(?:)re" TZ_HEX R"re(:){0,4})re" TZ_V4 TZ_BITS R"re())re"
    R"re(|(?:(?:)re" TZ_HEX R"re(:):(?:)re" TZ_HEX R"re(:){0,3})re" TZ_V4 TZ_BITS R"re())re"
    R"re(|(?:(?:)re" TZ_HEX R"re(:){2}:(?:)re" TZ_HEX R"re(:){0,2})re" TZ_V4 TZ_BITS R"re())re"
    R"re(|(?:(?:)re" TZ_HEX R"re(:){3}:(?:)re" TZ_HEX R"re(:){0,1})re" TZ_V4 TZ_BITS R"re())re"
    R"re(|(?:(?:)re" TZ_HEX R"re(:){4}:)re" TZ_V4 TZ_BITS R"re())re"
    R"re(|(?:(?:)re" TZ_HEX R"re(:){7})re" TZ_HEX TZ_BITS R"re())re"
    R"re(|(?::(?:(?::)re" TZ_HEX R"re(){1,6}|:))re" TZ_BITS R"re())re"
    R"re(|(?:)re" TZ_HEX R"re(:(?:(?::)re" TZ_HEX R"re(){1,5}|:))re" TZ_BITS R"re())re"
    R"re(|(?:(?:)re" TZ_HEX R"re(:){2}(?:(?::)re" TZ_HEX R"re(){1,4}|:))re" TZ_BITS R"re())re"
    R"re(|(?:(?:)re" TZ_HEX R"re(:){3}(?:(?::)re" TZ_HEX R"re(){1,3}|:))re" TZ_BITS R"re())re"
    R"re(|(?:(?:)re" TZ_HEX R"re(:){4}(?:(?::)re" TZ_HEX R"re(){1,2}|:))re" TZ_BITS R"re())re"
    R"re(|(?:(?:)re" TZ_HEX R"re(:){5}:(?:)re" TZ_HEX R"re()?)re" TZ_BITS R"re())re"
    R"re(|(?:(?:)re" TZ_HEX R"re(:){6}:)re" TZ_BITS R"re()))re";

#undef TZ_OCTET
#undef TZ_MASK
#undef TZ_HEX
#undef TZ_V4_OCTET
#undef TZ_V4
#undef TZ_BITS

constexpr std::string_view kMac =
    R"re(((?:(?:[0-9a-fA-F]){2}[-.: /]){5}(?:[0-9a-fA-F]){2})re"
    R"re(|(?:(?:[0-9a-fA-F]){4}[-.: /]){2}(?:[0-9a-fA-F]){4})re"
    R"re(|(?:(?:[0-9a-fA-F]){6}[-.: /])(?:[0-9a-fA-F]){6}))re";

constexpr AppCaptureTable kCaptures = {{
    {AppCapture_Bool, "bool", R"re((1|0|True|False))re"},
    {AppCapture_Int, "int", R"re((\-?\d+))re"},
    {AppCapture_Double, "double", R"re((\-?\d+(?:\.\d+)?))re"},
    {AppCapture_IP, "ip", kIP},
    {AppCapture_IPv6, "ipv6", kIPv6},
    {AppCapture_Mac, "mac", kMac},
    {AppCapture_Percent, "percent", R"re(((?:[-+]?\d+(?:\.\d+)?%)))re"},
    {AppCapture_String, "string", R"re((\S+))re"},
    {AppCapture_ConfigLet, "configlet", R"re((\S+))re"},
    {AppCapture_MString, "mstring", R"re((.+))re"},
    {AppCapture_MWord, "mword", R"re(([^\s\.;,]+[^\n\r\.;,]*[^\s\.;,]+|[^\s\.;,]+))re"},
}};
// clang-format on

constexpr bool RowsFollowTheEnumeration() {
    for (unsigned index = 0; index < kCaptures.size(); ++index) {
        if (kCaptures[index].capture != index) return false;
    }
    return true;
}
static_assert(RowsFollowTheEnumeration());

}  // namespace

const AppCaptureTable& GetAppCaptures() {
    return kCaptures;
}

std::string_view GetAppCapture(AppCapture_e capture) {
    return kCaptures[capture].expression;
}
