// The rate that a text gives is a loss in one syntax and a success in the other. The outcome is
// computed here; the statements that are installed say the same for those who read the definition.
#include "tzparser/keyword/appparserulekeywordping.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>

namespace {

constexpr const char* LostRate = "$lost_rate";
constexpr const char* PingResult = "$ping_result";
constexpr std::int64_t AllPackets = 100;

// No digits are 0; more of them than a number holds are the largest number.
int RateOf(const std::string& text) {
    int rate = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), rate);
    return read.ec == std::errc::result_out_of_range ? std::numeric_limits<int>::max() : rate;
}

}  // namespace

CAppParseRuleKeyWordPing::CAppParseRuleKeyWordPing(CAppParseRule* parent)
    : CAppParseRuleKeyWord(RuleType_Ping, parent, DeclaredLines()) {}

CAppParseRuleKeyWordPing::~CAppParseRuleKeyWordPing() = default;

CAppParseRule* CAppParseRuleKeyWordPing::CreateObject(CAppParseRule* parent) {
    return new CAppParseRuleKeyWordPing(parent);
}

const CAppParseRuleKeyWord::CBuiltInLines& CAppParseRuleKeyWordPing::DeclaredLines() {
    static const CBuiltInLines lines(
        {"$int:lost_rate", "$int:average_time"}, "$ping_result=$lost_rate",
        {{LostRate, "int"}, {"$average_time", "int"}, {PingResult, "bool"}});
    return lines;
}

const CAppParseRuleKeyWord::CBuiltInLines& CAppParseRuleKeyWordPing::LossLines() {
    static const CBuiltInLines lines({R"(regex[$int:lost_rate]:\((\d+)% loss\))",
                                      R"(regex[$int:average_time]:Average = (\d+)ms)"},
                                     "$ping_result=$lost_rate!=100", PingResult);
    return lines;
}

const CAppParseRuleKeyWord::CBuiltInLines& CAppParseRuleKeyWordPing::SuccessLines() {
    static const CBuiltInLines lines(
        {"Success rate is $int:lost_rate percent",
         R"(regex[$int:average_time]:round-trip min/avg/max = \d+/(\d+)/\d+ ms)"},
        "$ping_result=$lost_rate!=0", PingResult);
    return lines;
}

bool CAppParseRuleKeyWordPing::Parse(const std::string& text, int startLine, int endLine,
                                     IAppVariableCallback* callback) {
    const bool countsLoss = text.find(LossMark) != std::string::npos;
    const auto& lines = countsLoss ? LossLines() : SuccessLines();
    Install(lines);
    const bool ran = CAppParseRuleKeyWord::Parse(text, startLine, endLine, callback);
    const auto* rates = Values().Find(LostRate);
    if (rates == nullptr || rates->IsEmpty()) return ran;
    const std::int64_t rate = RateOf(rates->First().text);
    if (!countsLoss) {
        ClearVariable(LostRate);
        StoreComputed(LostRate, std::to_string(AllPackets - rate));
    }
    StoreResult(lines, countsLoss ? rate != AllPackets : rate != 0);
    return ran;
}

// No line declares the result, so it is added here.
void CAppParseRuleKeyWordPing::AppendKeywordVariables(std::vector<std::string>& names) {
    names.emplace_back(PingResult);
    SetVariableType(PingResult, "bool");
}
