#include "scalarjson.h"

#include "host/json/jsontext.h"
#include "host/text/asciicase.h"

#include <array>
#include <charconv>
#include <string_view>

namespace {

// A decimal number cut into its parts; the zeros in front are gone.
struct Decimal {
    bool isNegative = false;
    std::string_view whole;     // digits, maybe none
    std::string_view fraction;  // the point and at least one digit, or nothing
};

std::string_view TakeDigits(std::string_view& text) {
    std::size_t count = 0;
    while (count < text.size() && AsciiIsDigit(text[count])) ++count;
    const auto digits = text.substr(0, count);
    text.remove_prefix(count);
    return digits;
}

bool ReadDecimal(std::string_view text, Decimal& decimal) {
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        decimal.isNegative = text.front() == '-';
        text.remove_prefix(1);
    }
    decimal.whole = TakeDigits(text);
    const bool hasWhole = !decimal.whole.empty();
    while (!decimal.whole.empty() && decimal.whole.front() == '0') decimal.whole.remove_prefix(1);
    if (text.empty()) return hasWhole;
    if (text.front() != '.') return false;
    auto digits = text.substr(1);
    const auto fraction = TakeDigits(digits);
    decimal.fraction = text.substr(0, fraction.size() + 1);
    return digits.empty() && !fraction.empty();
}

void AppendDecimal(std::string& out, const Decimal& decimal) {
    if (decimal.isNegative) out += '-';
    out += decimal.whole.empty() ? std::string_view("0") : decimal.whole;
    out += decimal.fraction;
}

template <class Number>
bool Fits(std::string_view digits) {
    Number number = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return result.ec == std::errc();
}

bool AppendInteger(std::string& out, std::string_view text) {
    Decimal decimal;
    if (!ReadDecimal(text, decimal) || !decimal.fraction.empty()) return false;
    const auto begin = out.size();
    AppendDecimal(out, decimal);
    const auto written = std::string_view(out).substr(begin);
    if (decimal.isNegative ? Fits<long long>(written) : Fits<unsigned long long>(written))
        return true;
    out.resize(begin);
    return false;
}

// A real always has a point, so that a reader takes it for one whatever its value is. With more
// digits before the point a number may be beyond what a double holds.
bool AppendReal(std::string& out, std::string_view text) {
    constexpr std::size_t maxWholeDigits = 308;
    Decimal decimal;
    if (!ReadDecimal(text, decimal) || decimal.whole.size() > maxWholeDigits) return false;
    AppendDecimal(out, decimal);
    if (decimal.fraction.empty()) out += ".0";
    return true;
}

struct BoolWord {
    std::string_view word;
    std::string_view json;
};

constexpr std::array<BoolWord, 4> BoolWords = {{
    {"1", "true"},
    {"true", "true"},
    {"0", "false"},
    {"false", "false"},
}};

bool AppendBool(std::string& out, std::string_view text) {
    for (const auto& row : BoolWords) {
        if (!AsciiEqualIgnoreCase(text, row.word)) continue;
        out += row.json;
        return true;
    }
    return false;
}

struct TypedForm {
    AppDataType_e type;
    bool (*append)(std::string& out, std::string_view text);  // false: the text doesn't fit
};

constexpr std::array<TypedForm, 4> TypedForms = {{
    {AppDataType_Int, &AppendInteger},
    {AppDataType_Double, &AppendReal},
    {AppDataType_Float, &AppendReal},
    {AppDataType_Bool, &AppendBool},
}};

}  // namespace

void AppendScalar(std::string& out, AppDataType_e type, const CAppTextLet& value) {
    if (value.IsEmpty() && value.text.empty()) {
        out += "null";
        return;
    }
    for (const auto& form : TypedForms)
        if (form.type == type && form.append(out, value.text)) return;
    hxJson::AppendQuotedJson(out, value.text);
}

void AppendScalarAt(std::string& out, AppDataType_e type, const std::vector<CAppTextLet>& values,
                    std::size_t index) {
    if (index < values.size())
        AppendScalar(out, type, values[index]);
    else
        out += "null";
}
