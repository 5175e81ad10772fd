// A run: the header line, the columns, the end of the table, the lines that are no rows, the rows.
//
// The header is looked for among the open lines of the range. Columns come from the places of the
// headers in it, from a line of "===---" groups below it, or from the definition's own numbers. The
// first line that fits the end condition closes itself and all behind it. What is left is cut line
// by line (tablerow.h) and stored by variable and line.
#include "host/runtime/diagnostics.h"
#include "tzparser/rule/runlines.h"
#include "tzparser/table/appparseruletable.h"
#include "tzparser/table/tableplan.h"
#include "tzparser/table/tablerow.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace {

using namespace TableText;

constexpr int SeparatorLines = 5;
constexpr std::string_view DoubleRule = "===";
constexpr std::string_view SingleRule = "---";
constexpr CharSet LineEnds("\r\n");

bool Contains(std::string_view text, std::string_view piece) {
    return text.find(piece) != std::string_view::npos;
}

bool PlacesHeaders(int align) {
    return align == TableAlign_Left || align == TableAlign_Right;
}

int Saturate(Position value) {
    return static_cast<int>(std::clamp<Position>(value, std::numeric_limits<int>::min(),
                                                 std::numeric_limits<int>::max()));
}

// The places of the groups of a separator line; none when the line isn't one for so many columns. A
// rule of plain dashes or plain equal signs is none: a group has to have both.
std::vector<Position> SeparatorColumns(std::string_view line, std::size_t count) {
    std::vector<Position> columns;
    if (!Contains(line, DoubleRule) && !Contains(line, SingleRule)) return columns;
    std::vector<std::string_view> groups;
    Cut(Trim(line, WhiteSpace), Blanks, groups);
    if (groups.size() != count) return columns;
    Position from = 0;
    for (const auto group : groups) {
        if (!Contains(group, DoubleRule) || !Contains(group, SingleRule)) return {};
        columns.push_back(Find(line, group, from));
        from = FirstNotOf(line, Blanks, from + Size(group));
    }
    return columns;
}

// A variable of a run: where its cells go, and what its cell before was.
struct RunVariable {
    CLetColumn* cells = nullptr;  // null before the first cell
    std::string_view previous;
};

}  // namespace

bool CAppParseRuleTable::Parse(const std::string& text, int startLine, int endLine,
                               IAppVariableCallback*) {
    if (!OnBeginParse(startLine, endLine)) return false;
    ExecuteSearchReplace(GetNIStartLine(), GetNIEndLine());
    const auto plan = PlanOfRun();
    m_layout = {};
    m_layout.skip = m_definition->isSkipLine ? m_definition->skipLine : 0;
    m_layout.endLine = GetNIEndLine();
    const bool hasPlaces = FindHeader(*plan);
    if (m_layout.isHeaderFound) FindColumns(*plan, hasPlaces);
    FindEnd(*plan);
    if (m_layout.columns.empty() || m_layout.columns.size() != plan->headers.size()) return false;
    const auto ignored = IgnoredLines(*plan, text, m_layout.firstRow, m_layout.endLine);
    m_beginLine = m_layout.headerLine;
    m_endLine = m_layout.endLine;
    if (m_layout.firstRow <= m_lastAwaited) StoreAwaitedRows();
    if (const auto* lines = GetSampleLines()) m_values.ReadFrom(lines->Text());
    if (m_slotPlan != plan.get()) m_values.ForgetSlots();
    m_slotPlan = plan.get();
    m_lowestRow = std::min(m_lowestRow, m_layout.firstRow);
    ReadRows(*plan, ignored);
    RemoveEmptyRows();
    StopAwaiting();
    return true;
}

// Whether the accepted line has places for headers; these are then in the layout.
bool CAppParseRuleTable::FindHeader(const Plan& plan) {
    CTableHeaderSearch search(plan.header, PlacesHeaders(m_definition->align));
    const int end = std::min(GetNIEndLine(), m_lineStatus.Count());
    for (int line = m_lineStatus.NextOpen(GetNIStartLine()); line < end;
         line = m_lineStatus.NextOpen(line + 1)) {
        const auto text = WrappedLineView(line);
        if (text.empty() || !search.Try(text)) continue;
        m_layout.isHeaderFound = true;
        // A header found word by word is taken to be wrapped over two lines.
        m_layout.isWrappedHeader = search.Trial().verdict == HeaderVerdict_ByWords &&
                                   m_layout.skip == 0 && search.BeginsWithFirstWord();
        m_layout.headerLine = m_layout.isWrappedHeader ? line + 1 : line;
        m_layout.columns = search.Columns();
        return search.HasPlaces();
    }
    return false;
}

// Only where columns come from the header line are the lines before it closed.
void CAppParseRuleTable::FindColumns(const Plan& plan, bool hasPlaces) {
    ++m_layout.skip;
    if (hasPlaces) {
        m_lineStatus.Close(0, m_layout.headerLine);
        FindSeparator(plan);
    } else if (m_definition->align == TableAlign_Fixed ||
               m_definition->align == TableAlign_Tokens) {
        m_layout.columns = plan.range;
    }
}

void CAppParseRuleTable::FindSeparator(const Plan& plan) {
    const int from = FirstLineBelow();
    const int end =
        std::min({Saturate(Position{from} + SeparatorLines), GetNIEndLine(), m_lineStatus.Count()});
    for (int line = m_lineStatus.NextOpen(from); line < end;
         line = m_lineStatus.NextOpen(line + 1)) {
        auto columns = SeparatorColumns(WrappedLineView(line), plan.headers.size());
        if (columns.empty()) continue;
        m_layout.columns = std::move(columns);
        m_layout.headerLine = line;
        m_layout.separatorLine = line;
        if (m_definition->skipLine == 0 || m_definition->skipLine == 1) m_layout.skip = 1;
        return;
    }
}

int CAppParseRuleTable::FirstLineBelow() const {
    return Saturate(std::max<Position>(m_layout.headerLine + m_layout.skip, 0));
}

// The end condition is looked for also when there is no header, and closes the lines behind.
void CAppParseRuleTable::FindEnd(const Plan& plan) {
    m_layout.firstRow = FirstLineBelow();
    if (!plan.end.exists) return;
    const int last = GetNIEndLine();
    int matchEnd = 0;
    m_layout.endLine = plan.end.isMultiLine ? ParseMultipleLineMatch(m_layout.firstRow, last,
                                                                     plan.end.regexText, matchEnd)
                                            : FindEndLine(plan, m_layout.firstRow);
    m_layout.isEndFound = m_layout.endLine != last;
    m_lineStatus.Close(m_layout.endLine, m_lineStatus.Count());
}

int CAppParseRuleTable::FindEndLine(const Plan& plan, int from) {
    CAppRegexMatch match;
    const int last = std::min(GetNIEndLine(), m_lineStatus.Count());
    for (int line = m_lineStatus.NextOpen(from); line < last;
         line = m_lineStatus.NextOpen(line + 1)) {
        const auto text = TrimRight(WrappedLineView(line), LineEnds);
        if (!plan.end.regex)
            DiagnosticOutput("Invalid regex expression:" + plan.end.regexText + "\n");
        else if (plan.end.regex->Search(text, match) == AppRegexSearch_Match)
            return line;
    }
    return GetNIEndLine();
}

std::vector<char> CAppParseRuleTable::NoMarks(int first, int end) const {
    const int count = std::min(end, m_lineStatus.Count()) - first;
    return std::vector<char>(static_cast<std::size_t>(std::max(count, 0)));
}

// A mark for each line from the first row to the end of the table; empty when there is nothing to
// ask.
std::vector<char> CAppParseRuleTable::IgnoredLines(const Plan& plan, const std::string& text,
                                                   int first, int end) {
    std::vector<char> ignored;
    if (text.empty() || (IsLeaf() && plan.excludes.empty())) return ignored;
    ignored = NoMarks(first, end);
    if (ignored.empty()) return ignored;
    MarkFiltered(text, first, end, ignored);
    MarkExcluded(plan, first, ignored);
    return ignored;
}

// A filter below a table selects the lines that are no rows.
void CAppParseRuleTable::MarkFiltered(const std::string& text, int first, int end,
                                      std::vector<char>& ignored) {
    const int behind = first + static_cast<int>(ignored.size());
    for (const auto& child : Children()) {
        if (child->GetRuleType() != RuleType_Filter) continue;
        if (!child->Parse(text, first, end, nullptr)) continue;
        const auto& status = child->LineStatus();
        for (int line = status.NextOpen(first); line < behind && line < status.Count();
             line = status.NextOpen(line + 1))
            ignored[static_cast<std::size_t>(line - first)] = 1;
    }
}

// Closed lines are looked at too.
void CAppParseRuleTable::MarkExcluded(const Plan& plan, int first,
                                      std::vector<char>& ignored) const {
    if (plan.excludes.empty()) return;
    CAppRegexMatch match;
    for (std::size_t i = 0; i < ignored.size(); ++i) {
        const auto line = WrappedLineView(first + static_cast<int>(i));
        if (line.empty() || ignored[i] != 0) continue;
        const bool fits =
            std::any_of(plan.excludes.begin(), plan.excludes.end(), [&](const auto& expression) {
                return expression->Search(line, match) == AppRegexSearch_Match;
            });
        if (fits) ignored[i] = 1;
    }
}

void CAppParseRuleTable::GetAllFilterLines(const std::string& text, int first, int end,
                                           std::set<int>& lines) {
    lines.clear();
    first = std::max(first, 0);
    const auto ignored = IgnoredLines(*PlanOfRun(), text, first, end);
    for (std::size_t i = 0; i < ignored.size(); ++i)
        if (ignored[i] != 0) lines.insert(lines.end(), first + static_cast<int>(i));
}

void CAppParseRuleTable::GetAllExcludeLines(const std::string&, int first, int end,
                                            std::set<int>& lines) {
    first = std::max(first, 0);
    auto ignored = NoMarks(first, end);
    MarkExcluded(*PlanOfRun(), first, ignored);
    for (std::size_t i = 0; i < ignored.size(); ++i)
        if (ignored[i] != 0) lines.insert(first + static_cast<int>(i));
}

TableGrid CAppParseRuleTable::Grid(const Plan& plan) const {
    TableGrid grid;
    grid.align = m_definition->align;
    grid.columns = m_layout.columns;
    for (const auto& column : plan.columns) grid.headerLengths.push_back(column.headerLength);
    if (grid.align == TableAlign_Tokens)
        for (const auto count : grid.columns) grid.tokenSum += count;
    return grid;
}

// Cells of all lines of one run repeat each other's values, also across lines that are no rows.
class CAppParseRuleTable::RowWriter {
public:
    // Makes room for so many rows beside those that a variable has.
    RowWriter(const Plan& plan, CTableValues& values, std::size_t rows)
        : m_plan(plan), m_values(values), m_variables(plan.variables.size()), m_rows(rows) {}

    void Write(const TableColumn& column, const TableCell& cell, int row) {
        if (column.variable == TableColumn::NoVariable) return;
        const auto& variable = m_plan.variables[column.variable];
        auto& run = m_variables[column.variable];
        const auto text = cell.text.empty() && variable.follows ? run.previous : cell.text;
        run.previous = text;
        if (run.cells == nullptr) {
            run.cells = &m_values.ColumnAt(column.variable, variable.name);
            if (run.cells->IsEmpty()) run.cells->Reserve(m_rows);
        }
        const int line = cell.isOfNextLine ? row + 1 : row;
        m_values.Store(*run.cells, line, Saturate(cell.begin), text);
    }

private:
    const Plan& m_plan;
    CTableValues& m_values;
    std::vector<RunVariable> m_variables;
    std::size_t m_rows;
};

// How many rows to make room for: all lines may be rows, but a table of many columns that has few
// must not take more memory than the text may need.
std::size_t CAppParseRuleTable::RoomForRows(int first, int end, std::size_t variables) const {
    constexpr std::size_t share = 4;
    const auto* lines = GetSampleLines();
    if (lines == nullptr || !lines->Text() || end <= first || variables == 0) return 0;
    return std::min(static_cast<std::size_t>(end - first),
                    lines->Text()->size() / share / variables);
}

void CAppParseRuleTable::ReadRows(const Plan& plan, const std::vector<char>& ignored) {
    const auto grid = Grid(plan);
    const int end = std::min(m_layout.endLine, m_lineStatus.Count());
    const int first = m_layout.firstRow;
    const CRunLines lines(*this, GetSampleLines());
    CTableRow reader(grid);
    RowWriter writer(plan, m_values, RoomForRows(first, end, plan.variables.size()));
    for (int row = m_lineStatus.NextOpen(first); row < end; row = m_lineStatus.NextOpen(row + 1)) {
        if (!ignored.empty() && ignored[static_cast<std::size_t>(row - first)] != 0) continue;
        const auto line = lines.Wrapped(row);
        if (CTableRow::IsRule(line)) continue;
        const bool mayGoOn = row + 1 < end && IsLineOpen(row + 1);
        reader.Begin(line, mayGoOn ? lines.Wrapped(row + 1) : std::string_view());
        for (std::size_t column = 0; column < plan.columns.size(); ++column)
            writer.Write(plan.columns[column], reader.Cut(column), row);
        if (reader.IsMerged()) ++row;
    }
}

void CAppParseRuleTable::AddVariablePosInfo(const std::string& name, int line,
                                            const CAppTextLet& let) {
    StoreAwaitedRows();
    m_lowestRow = std::min(m_lowestRow, line);
    m_values.Store(name, line, let);
}

void CAppParseRuleTable::StoreEmptyRow(int line) {
    const CAppTextLet empty(line, 0, line, 0, std::string());
    for (const auto& column : m_definition->headerVars) m_values.Store(column.second, line, empty);
}

void CAppParseRuleTable::AwaitRows(IParagraphScope& paragraphs, int lastLine) {
    m_awaitedFrom = &paragraphs;
    m_lastAwaited = std::max(m_lastAwaited, lastLine);
}

void CAppParseRuleTable::StopAwaiting() {
    m_awaitedFrom = nullptr;
    m_lastAwaited = INT_MIN;
}

bool CAppParseRuleTable::HasAllColumns() const {
    const auto& variables = m_definition->headerVars;
    const auto& columns = StoredValues();
    return std::all_of(variables.begin(), variables.end(), [&columns](const auto& variable) {
        return columns.Find(variable.second) != nullptr;
    });
}

// A host that has the values may write to them anywhere.
int CAppParseRuleTable::TakeLowestRow() {
    const int lowest = std::exchange(m_lowestRow, INT_MAX);
    return m_values.IsHosted() ? INT_MIN : lowest;
}

std::vector<HeaderTrial> CAppParseRuleTable::ExplainHeader(int startLine, int endLine) {
    std::vector<HeaderTrial> trials;
    const auto plan = PlanOfRun();
    CTableHeaderSearch search(plan->header, PlacesHeaders(m_definition->align));
    const auto& status = GetParentRule() != nullptr ? GetParentRule()->LineStatus() : m_lineStatus;
    const int end = std::min(endLine, status.Count());
    bool isAccepted = false;
    for (int line = status.NextOpen(startLine); line < end && !isAccepted;
         line = status.NextOpen(line + 1)) {
        const auto text = WrappedLineView(line);
        if (text.empty()) continue;
        isAccepted = search.Try(text);
        trials.push_back(search.Trial());
        trials.back().line = line;
    }
    return trials;
}
