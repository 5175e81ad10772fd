// The returned dict becomes variables and tables. Conversions may run Python code (methods of
// objects, __str__), which may change what is being read: everything is held while it is looked at,
// and no more is read than there was at first.
#include "host/python/pythonlib.h"
#include "tzparser/script/appparserulescriptplan.h"
#include "tzparser/script/scriptrun.h"
#include "tzparser/variable/appdatatypehelper.h"

#include <algorithm>

namespace {

constexpr const char* NoDict = "The type of the returned value must be dict.";
constexpr const char* ColumnOrder = "$_columns";

std::string NameOf(PyObject* key) {
    return ScriptVariableName(PyObject_AsString(key));
}

// Calls `use` with name and value for each entry whose key is a text.
template <class Use>
void ForEachEntry(PyObject* dict, Use use) {
    PyObject* key = nullptr;
    PyObject* value = nullptr;
    Py_ssize_t at = 0;
    for (auto left = PyDict_Size(dict); left > 0 && PyDict_Next(dict, &at, &key, &value) != 0;
         --left) {
        if (PyUnicode_Check(key) == 0) continue;
        const auto heldKey = PyRef::Share(key);
        const auto heldValue = PyRef::Share(value);
        use(NameOf(key), value);
    }
}

// Calls `use` with index and value for each element.
template <class Use>
void ForEachElement(PyObject* list, Use use) {
    const auto count = PyList_Size(list);
    for (Py_ssize_t i = 0; i < count && i < PyList_Size(list); ++i) {
        const auto element = PyRef::Share(PyList_GetItem(list, i));
        if (element) use(static_cast<int>(i), element.Get());
    }
}

// A column of several types ends as strings; None, which has no type, changes nothing.
void MixType(std::string& entry, AppDataType_e type) {
    if (type == AppDataType_None) return;
    const auto& name = CAppDataTypeHelper::GetDataTypeStr(type);
    if (entry.empty())
        entry = name;
    else if (entry != name)
        entry = CAppDataTypeHelper::GetDataTypeStr(AppDataType_String);
}

void PutLet(std::map<int, CAppTextLet>& lets, int row, std::string text) {
    lets.insert_or_assign(lets.end(), row, CAppTextLet(row, 0, row, 0, std::move(text)));
}

// Fills up the rows from 0 until there are `count` entries in all. A row -1 counts among them, so
// a declared or empty column ends one row short.
void FillRowsOf(std::map<int, CAppTextLet>& lets, std::size_t count, const std::string& text) {
    auto at = lets.lower_bound(0);
    for (int row = 0; lets.size() < count; ++row) {
        if (at != lets.end() && at->first == row)
            ++at;
        else
            lets.emplace_hint(at, row, CAppTextLet(row, 0, row, 0, text));
    }
}

}  // namespace

bool CAppParseRuleScript::FillVariablePosInfos(PyObject* result) {
    if (result == nullptr || PyDict_Check(result) == 0) {
        SetLastError(NoDict);
        return false;
    }
    m_types = {};
    ClearVariablePosition();
    ParseVariableTree();
    ForEachEntry(result, [this](const std::string& name, PyObject* value) {
        if (PyDict_Check(value) != 0) {
            ReadTable(name, value);
            return;
        }
        auto type = AppDataType_None;
        std::string text;
        if (PyList_Check(value) == 0 && ExtractSingleVariableInfo(value, type, text))
            AddVariableInfo(name, text, type, 0);
    });
    FillRows();
    return true;
}

// Declared variables have stand-by values, which only what was declared can replace.
void CAppParseRuleScript::ParseVariableTree() {
    m_hasDeclaration = false;
    const auto plan = PlanOfRun();
    for (const auto& variable : plan->declaration.variables) {
        if (!variable.isTable) AddVariableInfo(variable.name, "None", variable.type, 0);
        for (const auto& column : variable.columns) {
            AddTableVariableInfo(variable.name, column.name, "", column.type, -1);
            m_types.Edit().columns[variable.name].push_back(column.name);
        }
    }
    m_hasDeclaration = plan->declaration.isThere;
}

void CAppParseRuleScript::ReadTable(const std::string& table, PyObject* columns) {
    ForEachEntry(columns, [this, &table](const std::string& column, PyObject* value) {
        if (PyDict_Check(value) != 0) return;
        auto type = AppDataType_None;
        std::string text;
        if (PyList_Check(value) == 0) {
            if (ExtractSingleVariableInfo(value, type, text))
                AddTableVariableInfo(table, column, text, type, 0);
        } else if (PyList_Size(value) == 0) {
            AddTableVariableInfo(table, column, "", AppDataType_String, -1);
        } else if (column == ColumnOrder) {
            ReadColumnOrder(table, value);
        } else {
            ReadColumn(table, column, value);
        }
    });
}

void CAppParseRuleScript::ReadColumn(const std::string& table, const std::string& column,
                                     PyObject* cells) {
    ColumnPlace place;
    ForEachElement(cells, [&](int row, PyObject* cell) {
        auto type = AppDataType_None;
        std::string text;
        if (!ExtractSingleVariableInfo(cell, type, text)) return;
        if (place.lets == nullptr && !FindColumn(table, column, place)) return;
        if (place.type != nullptr) MixType(*place.type, type);
        PutLet(*place.lets, row, std::move(text));
    });
}

void CAppParseRuleScript::ReadColumnOrder(const std::string& table, PyObject* names) {
    if (m_hasDeclaration) return;
    auto& order = m_types.Edit().columns;
    ForEachElement(names, [&order, &table](int, PyObject* name) {
        auto text = PyObject_AsString(name);
        if (!text.empty()) order[table].push_back(ScriptVariableName(std::move(text)));
    });
}

// False for what a declaration leaves out.
bool CAppParseRuleScript::FindColumn(const std::string& table, const std::string& column,
                                     ColumnPlace& place) {
    if (!m_hasDeclaration) {
        place.type = &m_types.Edit().tables[table][column];
        place.lets = &m_tableVariablePos[table][column];
        return true;
    }
    const auto columns = m_tableVariablePos.find(table);
    if (columns == m_tableVariablePos.end()) return false;
    const auto lets = columns->second.find(column);
    if (lets == columns->second.end()) return false;
    place.lets = &lets->second;
    return true;
}

void CAppParseRuleScript::AddVariableInfo(const std::string& name, const std::string& text,
                                          AppDataType_e type, int row) {
    if (m_hasDeclaration && m_variablePos.count(name) == 0) return;
    if (!m_hasDeclaration)
        m_types.Edit().variables.try_emplace(name, CAppDataTypeHelper::GetDataTypeStr(type));
    PutLet(m_variablePos[name], row, text);
}

void CAppParseRuleScript::AddTableVariableInfo(const std::string& table, const std::string& column,
                                               const std::string& text, AppDataType_e type,
                                               int row) {
    ColumnPlace place;
    if (!FindColumn(table, column, place)) return;
    if (place.type != nullptr) MixType(*place.type, type);
    PutLet(*place.lets, row, text);
}

void CAppParseRuleScript::FillRows() {
    const auto standBy = CAppDataTypeHelper::GetDefaltValue(AppDataType_String);  // as any type's
    for (const auto& table : m_types->tables) {
        auto& columns = m_tableVariablePos[table.first];
        std::size_t longest = 0;
        for (const auto& column : columns) longest = std::max(longest, column.second.size());
        for (auto& column : columns) FillRowsOf(column.second, longest, standBy);
    }
}

void CAppParseRuleScript::CheckVariableType() {
    const auto fill = [](TypeMap& types) {
        for (auto& entry : types)
            if (entry.second.empty())
                entry.second = CAppDataTypeHelper::GetDataTypeStr(AppDataType_String);
    };
    if (m_types->variables.empty() && m_types->tables.empty()) return;
    auto& types = m_types.Edit();
    fill(types.variables);
    for (auto& table : types.tables) fill(table.second);
}

// The columns that the script or the document put in order come first, the others by name.
void CAppParseRuleScript::CheckTableColumns() {
    if (m_types->tables.empty()) return;
    auto& types = m_types.Edit();
    for (const auto& [table, columns] : types.tables) {
        auto& order = types.columns[table];
        std::set<std::string> ordered;
        const auto isNone = [&columns = columns](const std::string& name) {
            return name.empty() || columns.count(name) == 0;
        };
        order.erase(std::remove_if(order.begin(), order.end(), isNone), order.end());
        ordered.insert(order.begin(), order.end());
        for (const auto& column : columns)
            if (ordered.count(column.first) == 0) order.push_back(column.first);
    }
}
