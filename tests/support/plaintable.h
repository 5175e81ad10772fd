#pragma once

#include "tzparser/text/apptextlet.h"

#include <map>
#include <set>
#include <string>
#include <vector>

// CPlainTable reads a table as its rule is described, step by step and with no thought of speed:
// what the table rule is held to by the tests over generated tables and by the fuzzer. It knows one
// run over a whole text whose lines are all open; filters, exclude patterns and end patterns over
// several lines are left to tests with wanted results.
//
//     CPlainTable table;
//     table.headers = {"Port", "Name"};
//     table.headerVars = {{"Port", "$port"}};
//     if (table.Read(lines)) table.Values().at("$port");     // by line
//
// Its numbers are signed and -1 stands for "none", as in the description.
class CPlainTable {
public:
    using Values_t = std::map<std::string, std::map<int, CAppTextLet>>;

    std::vector<std::string> headers;
    std::map<std::string, std::string> headerVars;
    std::set<std::string> followVars;
    std::string alignRange;
    std::string endCondition;
    int align = 0;
    int skipLine = 0;
    bool isSkipLine = false;
    bool isUsePreVars = false;

    // False when the rule would not find the table. Values gather over several calls.
    bool Read(const std::vector<std::string>& lines);
    const Values_t& Values() const { return m_values; }
    int HeaderLine() const { return m_headerLine; }
    int EndLine() const { return m_endLine; }

private:
    struct Row {
        int number = 0;
        std::string line;
        std::string next;
        std::vector<std::string> tokens;
        bool isMerged = false;
        int start = 0;
        int length = 0;
        int tokenIndex = 0;
        int tokenEnd = 0;

        int Size() const { return static_cast<int>(line.size()); }
        void GoOnInNext();
    };

    bool FindHeader();
    bool FitsDirectly(const std::string& line);
    bool FitsByWords(const std::string& line);
    bool WalkWords(const std::string& line, const std::vector<std::string>& words);
    void FindColumns();
    void SplitRange();
    void FindSeparator();
    bool FitsSeparator(const std::string& line, std::vector<int>& places) const;
    void FindEnd();
    void ReadRow(int& number);
    void StartCell(Row& row, int column) const;
    void StartLeft(Row& row, int column) const;
    void StartRight(Row& row, int column) const;
    void MeasureLeft(Row& row, int column) const;
    void MeasureRight(Row& row, int column) const;
    void MeasureWords(Row& row, int column) const;
    static std::string CutCell(Row& row);
    void StoreCell(Row& row, int column, std::string cell);
    void RemoveEmptyRows();
    bool IsLast(int column) const { return column + 1 == static_cast<int>(m_columns.size()); }
    int Column(int column) const { return m_columns[static_cast<std::size_t>(column)]; }
    int RightEdge(int column) const;
    bool HasPlaces() const { return align == 0 || align == 1; }

    std::vector<std::string> m_lines;
    std::map<std::string, int> m_headerPos;
    std::vector<int> m_columns;
    std::vector<int> m_widths;
    std::map<std::string, std::string> m_previous;
    Values_t m_values;
    int m_skip = 0;
    int m_headerLine = 0;
    int m_endLine = 0;
    int m_firstOpen = 0;
};
