#pragma once

#include "host/json/hxjson.h"
#include "host/log/ilogger.h"
#include "host/python/pythonapi.h"
#include "host/python/pythonlib.h"
#include "host/python/pythreadstatelock.h"
#include "tzparser/script/appparserulescript.h"

#include "support/letdump.h"

#include <memory>
#include <mutex>
#include <string>

#include <gtest/gtest.h>

// A rule by itself, with the script as given and what a document may add as JSON members.
inline std::unique_ptr<CAppParseRuleScript> ScriptRule(const std::string& script) {
    auto rule = std::make_unique<CAppParseRuleScript>(nullptr);
    rule->SetScript(script);
    return rule;
}

// A script whose function returns the value of an expression, in which `t` is the text.
inline std::string Returning(const std::string& expression) {
    return "def ParseText(t):\n    return " + expression + "\n";
}

// `name type 0: "text"; ...` a line, tables as `table (columns in order)` and their columns below.
inline std::string DumpResult(CAppParseRuleScript& rule) {
    const auto dumpLets = [](const std::map<int, CAppTextLet>& lets) {
        std::string dump;
        for (const auto& [row, let] : lets)
            dump += " " + std::to_string(row) + ":\"" + let.text + "\"";
        return dump;
    };
    std::string dump;
    for (const auto& [name, type] : rule.GetVariableTypeDefine())
        dump += name + " " + type + dumpLets(rule.GetVariablePos()[name]) + "\n";
    for (const auto& [table, types] : rule.GetTableVariableTypeDefine()) {
        dump += table + "\n";
        for (const auto& column : rule.GetTableVariableNames(table))
            dump += "  " + column + " " + types.at(column) +
                    dumpLets(rule.GetTableVariablePos()[table][column]) + "\n";
    }
    return dump;
}

// Takes the log while it lives; entries as `source:line function level: text`.
class LogCatcher : public ILogger {
public:
    LogCatcher() : m_before(GetInstance()) { SetInstance(this); }
    ~LogCatcher() override { SetInstance(m_before); }

    void LogStr(const char* first, const char* second, const char* file, const char* function,
                int line, ELogLevel level, const std::string& text) override {
        const std::lock_guard<std::mutex> lock(m_lock);
        m_entries += std::string(first) + " " + second + " " + file + ":" + std::to_string(line) +
                     " " + function + " " + std::to_string(level) + ": " + text + "\n";
    }

    std::string Take() {
        const std::lock_guard<std::mutex> lock(m_lock);
        return std::exchange(m_entries, {});
    }

private:
    ILogger* m_before;
    std::mutex m_lock;
    std::string m_entries;
};
