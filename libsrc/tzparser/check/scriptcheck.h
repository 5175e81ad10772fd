#pragma once

#include "host/json/hxjson.h"
#include "tzparser/check/checkreport.h"

#include <set>
#include <string>

// CScriptCheck checks the node of a script rule: whether the script compiles and has the function
// that is called, its declaration, and the lists of variables and columns.
//
//     CScriptCheck(report, "samples[0].parserRules.parserule[0]").Check(node);
//
// Nothing of the script runs. Without a Python interpreter the script's syntax isn't looked at. One
// thread at a time.
class CScriptCheck {
public:
    CScriptCheck(CCheckReport& report, std::string path)
        : m_report(report), m_path(std::move(path)) {}

    // `node` with its keys in small letters.
    void Check(const hxJson::Value& node);

private:
    using Names = std::set<std::string>;

    void CheckSource(const std::string& script);
    void CheckDeclaration(const std::string& script);
    void CheckDeclared(const hxJson::Value& element, const std::string& where);
    void CheckDeclaredType(const std::string& word, const std::string& where);

    void CheckTables(const hxJson::Value& node);
    void CheckTable(const hxJson::Value& table, const hxJson::Value& node,
                    const std::string& where);
    Names CheckTypes(const hxJson::Value& holder, const std::string& where);
    void CheckColumns(const hxJson::Value& list, const Names& columns, const std::string& where);
    void CheckMembers(const hxJson::Value& node);

    CCheckReport& m_report;
    std::string m_path;
    bool m_hasDeclaration = false;
    Names m_declared;  // variables of the declaration
    Names m_tables;    // tables of the document, as members are named
};
