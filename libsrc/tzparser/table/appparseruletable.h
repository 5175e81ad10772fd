#pragma once

#include "tzparser/rule/appparserulekeyed.h"
#include "tzparser/rule/paragraphscope.h"
#include "tzparser/table/tablelayout.h"
#include "tzparser/table/tablevalues.h"

#include <climits>
#include <cstddef>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

class CTableHeader;
struct TableGrid;

// CAppParseRuleTable reads a column-aligned table: it finds the header among the lines open to it,
// works out where the columns lie and where the table ends, and cuts each row into cells.
//
//     auto* rule = new CAppParseRuleTable(&sample);
//     sample.AddChildRule(rule);
//     rule->SetName("ports");
//     rule->SetHeader("Port;Name;VLAN");
//     rule->AddHeaderVar("Port", "$port");
//     rule->AddHeaderVar("VLAN", "$int:vlan");             // the column Name is parsed and dropped
//     sample.Parse("Port   Name   VLAN\n"
//                  "Gi0/1  uplink 10\n", 0, -1, nullptr);
//     rule->GetVariablePos().at("$vlan").at(1);            // row 1, columns 14 to 16, "10"
//
// Tables of devices are only roughly aligned: values overrun their columns, are shifted, or wrap to
// the next line. The steps that put up with that are told in tablerow.h, one step a function.
//
// Values stay over parses and add up, keyed by line: below a paragraph a table runs once a
// paragraph and keeps the rows of all of them. ClearVariablePosition doesn't touch them.
//
// What the definition says is compiled when it is loaded, otherwise by the first parse, and shared
// by clones. Lines and columns count from 0, columns are bytes, ends are exclusive. One thread at a
// time uses a rule.
class TZPARSER_API CAppParseRuleTable : public CAppParseRuleKeyed {
public:
    using VariablePositions = CLetColumns::Positions;

    explicit CAppParseRuleTable(CAppParseRule* parent);
    ~CAppParseRuleTable() override;

    // Definition. Setters tell the root that the definition has changed, those of numbers only when
    // the value is another one; AddHeaderVar, DelHeaderVar, AddTableKey and AddTableInterfaceKey
    // never tell.
    const std::string& GetName() const { return m_definition->name; }
    void SetName(const std::string& name);
    // The headers in the order of their columns, as one text with ";" between them. Each is trimmed
    // of blanks and line ends; an empty piece is an empty header, an empty text no header.
    void SetHeader(const std::string& headers);
    // The headers, for writing, also later; valid until another rule is copied into this one.
    std::vector<std::string>& GetHeader();
    const std::vector<std::string>& Headers() const { return m_definition->headers; }
    // The statement of the line that ends the table, itself no row; empty for none.
    void SetEndCond(const std::string& statement);
    const std::string& GetEndCond() const { return m_definition->endCond; }
    // How many lines lie between the header and the first row; counts only with IsSkipLine. A text
    // reads as the number it begins with, or 0.
    void SetSkipLine(int count);
    void SetSkipLine(const std::string& count);
    int GetSkipLine() const { return m_definition->skipLine; }
    void SetIsSkipLine(bool skip);
    bool IsSkipLine() const { return m_definition->isSkipLine; }
    // A TableAlign_e; with another number Parse fails.
    void SetAlign(int align);
    void SetAlign(const std::string& align);
    int GetAlign() const { return m_definition->align; }
    // Numbers with ";" between them: for fixed columns where they begin, for tokens how many each
    // column takes.
    void SetAlignRange(const std::string& range);
    const std::string& GetAlignRange() const { return m_definition->alignRange; }
    // Kept with the rule; GetAlign alone decides.
    void SetAlignLeft(bool left);
    bool IsAlignLeft() const { return m_definition->alignLeft; }
    // Whether an empty cell of a follow variable takes the value of the row before.
    void SetIsUsePreVars(bool use);
    bool IsUsePreVars() const { return m_definition->isUsePreVars; }
    void AddFollowVar(const std::string& name);
    void DelFollowVar(const std::string& name);
    const std::set<std::string>& GetUsePreVars() const { return m_definition->followVars; }
    void AddKeyVar(const std::string& name);
    void DelKeyVar(const std::string& name);
    const std::set<std::string>& GetKeyVars() const { return m_definition->keyVars; }
    // Statements kept for the caller; a parse doesn't read them. Del takes out the first equal one.
    void AddStatement(const std::string& statement);
    void DelStatement(const std::string& statement);
    const std::vector<std::string>& GetStatements() const { return m_definition->statements; }
    // Statements of lines that are no rows.
    const std::vector<std::string>& GetExcludeLines() const { return m_definition->excludeLines; }
    // Empties the definition and all values; the name, the end condition, the exclude lines and the
    // interface keys stay.
    void Reset();

    // Gives a header's column to the variable of a pattern, such as "$int:vlan". A pattern with two
    // variables and a regular expression store nothing; of one that is no statement, what stands
    // from its "$" to the next blank is taken, without the first character that no name has.
    void AddHeaderVar(const std::string& header, const std::string& pattern);
    void DelHeaderVar(const std::string& header);
    // Header to variable name with "$".
    const std::map<std::string, std::string>& GetHeaderVars() const {
        return m_definition->headerVars;
    }
    // The type word of a variable, "$" in front or not, also of a keyword rule's in a paragraph
    // above; empty when it isn't known.
    std::string GetVariableType(const std::string& name) const;
    const std::map<std::string, std::string>& GetVariableTypeDefine() const {
        return m_definition->variableTypes;
    }
    // The text kept for an enumerated variable; empty when there is none.
    std::string GetEnumVariableValue(const std::string& name) const;
    // The variables of the columns in the order of the headers, then those of keyword rules in the
    // paragraphs above, each once.
    std::vector<std::string> GetVariableNames() const;

    // For tools that make a rule of a sample line: "$" and the header in small letters, with "_"
    // for all that is no letter or digit.
    static std::string GetDefaultColumnVariableName(const std::string& header);
    // The headers of a line with ";" between them: two separators in a row end a header, a single
    // one inside belongs to it.
    static std::string GetHeaderByALineText(const std::string& line);

    // Run. False when no header is found or the columns aren't as many as the headers; values and
    // GetBeginLine then stay as they were.
    bool Parse(const std::string& text, int startLine, int endLine,
               IAppVariableCallback* callback) override;
    // The header line of the last parse that found a table; -1 before.
    int GetBeginLine() const { return m_beginLine; }
    // The values found, by variable name with "$" and by line: for reading, as a copy, and as the
    // maps themselves for a host, after which every parse looks at all of them.
    const CLetColumns& Values() const {
        StoreAwaitedRows();
        return m_values.Columns();
    }
    VariablePositions VariablePos() const { return Values().ToPositions(); }
    VariablePositions& GetVariablePos() {
        StoreAwaitedRows();
        return m_values.HostPositions();
    }
    // Stores a cell under a line, in the place of one that stood there.
    void AddVariablePosInfo(const std::string& name, int line, const CAppTextLet& let);
    // Stores a row of empty cells, of all columns that have a variable, at the first line of a
    // paragraph without rows. The next parse that finds a table takes it out again, as it does with
    // all rows without text.
    void StoreEmptyRow(int line);

    // A paragraph above that is being parsed may keep such rows back: the next parse of the table
    // mostly takes them out again. Whoever reads the values before makes it store them, as does a
    // parse that finds a table with rows at or before the last line kept back. `paragraphs` has to
    // live until then.
    void AwaitRows(IParagraphScope& paragraphs, int lastLine);
    // False again after a parse that found a table: nothing may be stored then.
    bool AwaitsRows() const { return m_awaitedFrom != nullptr; }
    void StopAwaiting();
    // The values without the rows kept back.
    const CLetColumns& StoredValues() const { return m_values.Columns(); }
    // Whether all variables of headers have a column, be it an empty one.
    bool HasAllColumns() const;
    // The lowest line that rows may have been stored at since the last call; INT_MAX for none.
    int TakeLowestRow();

    // What the last parse decided.
    const TableLayout& LastLayout() const { return m_layout; }
    // The search for the header once more, over a range: how far each line got that is open to the
    // rule and not empty. Ends with the line that is accepted.
    std::vector<HeaderTrial> ExplainHeader(int startLine, int endLine);

    // A cell's name may have the rule's name and "." in front. A name that the table doesn't have
    // may be that of a keyword rule in a paragraph above: each row gets the value of its paragraph.
    std::vector<CAppTextLet> GetVariableValue(const std::string& name) override;
    CLetList FindValues(const std::string& name) override;
    CAppParseRule* GetChildRuleByVariableName(const std::string& name) override;
    // The XML form keeps what the JSON form loses, but for the exclude lines.
    bool LoadFromXml(CMarkup& xml) override;
    bool SaveToXml(CMarkup& xml) override;
    // Whether some cell has an empty span.
    bool IsNoneExist() override;
    CAppParseRule* CreateObject(CAppParseRule* parent) override;
    // The header line, or for a name that begins with ".start" the end line; false before a parse.
    bool GetVariableLine(const std::string& name, int& line) override;
    bool AddToVariableTree(CAppVariableDef* parent) override;
    void SaveResultAsXML(CMarkup& xml) override;
    bool SaveResultAsJson(hxJson::Value& node) override;

protected:
    bool LoadParseRule(const hxJson::Value& node) override;
    // Alignment, hash settings and exclude lines don't come back from what this writes.
    bool SaveParseRule(hxJson::Value& node) override;
    bool OnCopyTo(CAppParseRule* target) override;
    // The expression that the whole header line has to match.
    std::string GetTableHeaderRegex() const;
    // The lines of a range that are no rows: those that a filter below selects and those that an
    // exclude pattern fits; of an empty text none. Replaces `lines`.
    void GetAllFilterLines(const std::string& text, int first, int end, std::set<int>& lines);
    // Adds the lines that an exclude pattern fits.
    void GetAllExcludeLines(const std::string& text, int first, int end, std::set<int>& lines);
    void RemoveEmptyRows() { m_values.RemoveEmptyRows(); }

private:
    struct Plan;
    class RowWriter;

    struct Definition {
        std::string name;
        std::vector<std::string> headers;
        std::string endCond;
        int skipLine = 0;
        std::map<std::string, std::string> headerVars;
        std::vector<std::string> statements;
        bool isSkipLine = false;
        bool isUsePreVars = false;
        bool alignLeft = true;
        int align = TableAlign_Left;
        std::string alignRange;
        std::set<std::string> keyVars;
        std::set<std::string> followVars;
        std::map<std::string, std::string> variableTypes;
        std::map<std::string, std::string> enumValues;
        std::vector<std::string> excludeLines;
        std::shared_ptr<const Plan> plan;  // made when the definition is loaded
    };

    Definition& EditDefinition();
    void LeaveHostedHeaders();
    template <class T>
    void Set(T Definition::*field, const T& value);
    template <class T>
    void SetOther(T Definition::*field, const T& value);
    std::string FindVariableType(const std::string& name) const;
    void LoadHeaderVars(const std::string& text);
    void LoadExcludeLines(const hxJson::Value& node);
    std::string HeaderVarsText() const;
    void LoadVariableTypes(const std::vector<std::string>& entries);
    std::vector<std::string> VariableTypeEntries() const;
    void LoadColumnsFromXml(CMarkup& xml);

    std::shared_ptr<const Plan> MakePlan();
    std::shared_ptr<const Plan> PlanOfRun();
    CTableHeader MakeHeader();
    void AddColumns(Plan& plan) const;
    std::size_t SlotOf(Plan& plan, const std::string& name) const;
    void AddEndCond(Plan& plan);
    void AddExcludes(Plan& plan);

    bool FindHeader(const Plan& plan);
    void FindColumns(const Plan& plan, bool hasPlaces);
    void FindSeparator(const Plan& plan);
    int FirstLineBelow() const;
    void FindEnd(const Plan& plan);
    int FindEndLine(const Plan& plan, int from);
    // One for each line of a range that the text has.
    std::vector<char> NoMarks(int first, int end) const;
    std::vector<char> IgnoredLines(const Plan& plan, const std::string& text, int first, int end);
    void MarkFiltered(const std::string& text, int first, int end, std::vector<char>& ignored);
    void MarkExcluded(const Plan& plan, int first, std::vector<char>& ignored) const;
    TableGrid Grid(const Plan& plan) const;
    std::size_t RoomForRows(int first, int end, std::size_t variables) const;
    void ReadRows(const Plan& plan, const std::vector<char>& ignored);
    void StoreAwaitedRows() const {
        if (m_awaitedFrom != nullptr) m_awaitedFrom->StoreAwaitedRows();
    }

    std::string KeyOf(const std::string& name) const;
    void AppendParagraphValues(const std::string& name, CLetList& values) const;

    CCopyOnWrite<Definition> m_definition;
    bool m_isHeaderHosted = false;  // a host may hold a reference to the headers

    // What runs made.
    int m_beginLine = -1;
    int m_endLine = -1;
    CTableValues m_values;
    int m_lowestRow = INT_MAX;
    IParagraphScope* m_awaitedFrom = nullptr;  // keeps rows of empty cells back
    int m_lastAwaited = INT_MIN;               // the highest of their lines
    TableLayout m_layout;
    std::shared_ptr<const Plan> m_runPlan;  // when the definition has none
    const Plan* m_slotPlan = nullptr;       // by whose variables the values know their columns
};
