// 1. The last open line with an address is that of the last hop, whatever the line is otherwise.
// 2. The first open line with a keyword of a header and a text behind it is the header.
// 3. When the hop stands below the header, the rule's line reads from the hop on.
// 4. With a value for $last_hop, the result is whether hop and target are one device. The rule's
//    own line gives it none.
//
// Below a paragraph a text has many runs, each of which looks at all open lines. So from the second
// run on the lines that no trace can have are known, open or not.
#include "tzparser/keyword/appparserulekeywordtracert.h"

#include "host/store/interfacesetting.h"
#include "host/text/addresstext.h"
#include "host/text/stlhelper.h"
#include "tzparser/rule/appsamplelines.h"

#include <string_view>

namespace {

constexpr const char* LastHop = "$last_hop";
constexpr const char* TraceResult = "$traceroute_result";
constexpr std::string_view HeaderKeywords[] = {"tracing", "traceroute to", "Traceroute="};
constexpr std::string_view Blanks = " \r\t";

// What stands behind the first of the keywords, in their order, that a line contains; empty when
// there is none or nothing behind it.
std::string_view BehindHeaderKeyword(std::string_view line) {
    for (const auto keyword : HeaderKeywords) {
        const auto at = StlHelper::findIgnoreCase(line, keyword);
        if (at == std::string_view::npos) continue;
        const auto behind = line.substr(at + keyword.size());
        const auto first = behind.find_first_not_of(Blanks);
        return first == std::string_view::npos ? std::string_view() : behind.substr(first);
    }
    return {};
}

bool IsOneDevice(const std::string& firstIp, const std::string& secondIp) {
    if (firstIp == secondIp) return true;
    InterfaceSetting first;
    InterfaceSetting second;
    return InterfaceSetting::getInterfaceProperty(nullptr, firstIp, first, false) &&
           InterfaceSetting::getInterfaceProperty(nullptr, secondIp, second, false) &&
           first.m_deviceId == second.m_deviceId;
}

}  // namespace

CAppParseRuleKeyWordTraceRT::CAppParseRuleKeyWordTraceRT(CAppParseRule* parent)
    : CAppParseRuleKeyWord(RuleType_TraceRoute, parent, DeclaredLines()) {}

CAppParseRuleKeyWordTraceRT::~CAppParseRuleKeyWordTraceRT() = default;

CAppParseRule* CAppParseRuleKeyWordTraceRT::CreateObject(CAppParseRule* parent) {
    return new CAppParseRuleKeyWordTraceRT(parent);
}

const CAppParseRuleKeyWord::CBuiltInLines& CAppParseRuleKeyWordTraceRT::DeclaredLines() {
    static const CBuiltInLines lines({"$ip:last_hop"},
                                     "$traceroute_result=::is_device_ip($target_device,$last_hop)",
                                     {{LastHop, "ip"}, {TraceResult, "bool"}});
    return lines;
}

const CAppParseRuleKeyWord::CBuiltInLines& CAppParseRuleKeyWordTraceRT::HopLines() {
    static const CBuiltInLines lines({R"(regex[$ip:last_hop]:(\d+\.\d+\.\d+\.\d+))"},
                                     "$traceroute_result=::is_device_ip($target_ip,$last_hop)",
                                     TraceResult);
    return lines;
}

bool CAppParseRuleKeyWordTraceRT::Parse(const std::string&, int startLine, int endLine,
                                        IAppVariableCallback*) {
    return ParseWith(HopLines(), startLine, endLine);
}

// The base's Parse isn't of use, since the range begins at the hop.
bool CAppParseRuleKeyWordTraceRT::ParseWith(const CBuiltInLines& lines, int startLine,
                                            int endLine) {
    Install(lines);
    if (auto* parent = GetParentRule()) m_lineStatus = parent->LineStatus();
    const auto trace = FindTrace(startLine);
    bool ran = true;
    if (trace.HasHops()) {
        ran = OnBeginParse(trace.lastIpLine, endLine);
        if (ran) ParseRange();
    }
    const auto* hops = Values().Find(LastHop);
    if (hops != nullptr && !hops->IsEmpty())
        StoreResult(lines, IsOneDevice(trace.targetIp, hops->First().text));
    return ran;
}

CAppParseRuleKeyWordTraceRT::Trace CAppParseRuleKeyWordTraceRT::FindTrace(int startLine) const {
    Trace trace;
    trace.lastIpLine = startLine;
    if (const auto* lines = GetSampleLines()) {
        const auto& bounds = BoundsIn(*lines);
        FindLastIpLine(*lines, bounds.last, trace);
        FindHeader(*lines, bounds.first, trace);
    }
    return trace;
}

// Each parse of a text makes a table of lines with a text of its own.
const CAppParseRuleKeyWordTraceRT::Bounds& CAppParseRuleKeyWordTraceRT::BoundsIn(
    const CAppSampleLines& lines) const {
    const int count = lines.Count();
    if (m_boundsText.lock() != lines.Text()) {
        m_boundsText = lines.Text();
        m_bounds = {0, count - 1, false};
    } else if (!m_bounds.areNarrow) {
        auto& [first, last, areNarrow] = m_bounds;
        while (first < count && BehindHeaderKeyword(lines.View(first)).empty()) ++first;
        while (last >= 0 && StrHasIp2(lines.View(last)).empty()) --last;
        areNarrow = true;
    }
    return m_bounds;
}

void CAppParseRuleKeyWordTraceRT::FindLastIpLine(const CAppSampleLines& lines, int last,
                                                 Trace& trace) const {
    int line = m_lineStatus.PreviousOpen(last);
    while (line >= 0 && StrHasIp2(lines.View(line)).empty())
        line = m_lineStatus.PreviousOpen(line - 1);
    if (line >= 0) trace.lastIpLine = line;
}

void CAppParseRuleKeyWordTraceRT::FindHeader(const CAppSampleLines& lines, int first,
                                             Trace& trace) const {
    for (int line = m_lineStatus.NextOpen(first); line < m_lineStatus.Count();
         line = m_lineStatus.NextOpen(line + 1)) {
        const auto behind = BehindHeaderKeyword(lines.View(line));
        if (behind.empty()) continue;
        trace.headerLine = line;
        trace.targetIp = StrHasIp2(behind);
        return;
    }
}

// No line declares the result, so it is added here.
void CAppParseRuleKeyWordTraceRT::AppendKeywordVariables(std::vector<std::string>& names) {
    names.emplace_back(TraceResult);
    SetVariableType(TraceResult, "bool");
}
