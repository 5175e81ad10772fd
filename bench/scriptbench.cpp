// A script of ten lines over a text of 2 KB, against the plain interpreter that runs the whole
// program of script and text each time, and reads nothing of its result.
#include "host/json/hxjson.h"
#include "host/python/pythonlib.h"
#include "tzparser/engine/tzparser.h"

#include "benchtext.h"
#include "ratiotable.h"

#include <memory>
#include <string>

#include <Python.h>
#include <benchmark/benchmark.h>

namespace {

constexpr const char* Script =
    "import re\n"
    "PORT = re.compile(r'^(\\S+) is (up|down)', re.M)\n"
    "def ParseText(text):\n"
    "    names, states = [], []\n"
    "    for match in PORT.finditer(text):\n"
    "        names.append(match.group(1))\n"
    "        states.append(match.group(2))\n"
    "    return {'count': len(names),\n"
    "            'ports': {'_columns': ['name', 'state'],\n"
    "                      'name': names, 'state': states}}\n";

const std::string& Text() {
    static const auto text = [] {
        std::string ports;
        for (int i = 0; ports.size() < 2048; ++i)
            ports += "GigabitEthernet0/" + std::to_string(i) +
                     " is up, line protocol is up\n  Description: uplink, MTU 1500\n";
        return ports;
    }();
    return text;
}

std::shared_ptr<CTzParser> MakeParser() {
    hxJson::Value rule;
    rule["type"] = 8;
    rule["script"] = Script;
    hxJson::Value rules;
    rules["parserule"].append(rule);
    hxJson::Value sample;
    sample["identify"] = "{}";
    sample["parserRules"] = rules.toString();
    hxJson::Value definition;
    definition["samples"].append(sample);
    auto parser = std::make_shared<CTzParser>();
    parser->SetParser(definition);
    return parser;
}

void ScriptParse(benchmark::State& state) {
    static const auto parser = MakeParser();
    std::string error;
    if (!parser->Parse(Text(), error)) state.SkipWithError(error.c_str());
    for (auto _ : state) benchmark::DoNotOptimize(parser->Parse(Text(), error));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Text().size()));
}

bool RunProgram(const std::string& number) {
    const PyGILState_STATE held = PyGILState_Ensure();
    PyRun_SimpleString("import sys");
    PyObject* const globals = PyModule_GetDict(PyImport_AddModule("__main__"));
    std::string program = Script;
    program += "\n_original_result_" + number + " = r'''" + Text() + "'''\nparse_result_" + number +
               " = ParseText(_original_result_" + number + ")\n";
    PyObject* const done = PyRun_String(program.c_str(), Py_file_input, globals, globals);
    Py_XDECREF(done);
    PyGILState_Release(held);
    return done != nullptr;
}

void ScriptPlain(benchmark::State& state) {
    pythonlib_init_ex(nullptr, 0, 0);
    const auto number = std::to_string(state.thread_index());
    for (auto _ : state)
        if (!RunProgram(number)) state.SkipWithError("the program failed");
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Text().size()));
}

BENCHMARK(ScriptPlain)->ThreadRange(1, 2)->UseRealTime();
BENCHMARK(ScriptParse)->ThreadRange(1, 2)->UseRealTime();

const bool rows = CRatioTable::Add({
    {"2 KB: a script of ten lines, to the plain interpreter",
     "ScriptParse/real_time/threads:1",
     "ScriptPlain/real_time/threads:1",
     RatioMeasure_Microseconds,
     {RatioAim::Ratio, '<', 0.5}},
    {"the same in two threads, to the plain interpreter",
     "ScriptParse/real_time/threads:2",
     "ScriptPlain/real_time/threads:2",
     RatioMeasure_Microseconds,
     {}},
});

}  // namespace
