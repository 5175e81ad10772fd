#include "parserhandle.h"

#include "nodehandle.h"
#include "parsebatch.h"

#include <stdexcept>
#include <utility>

#include <boost/python/extract.hpp>

namespace py = boost::python;

namespace {

py::object Text(std::string_view bytes) {
    return py::object(py::handle<>(TextObject(bytes).Release()));
}

const char* NameOf(SampleChoice_e reason) {
    switch (reason) {
        case SampleChoice_Matched:
            return "matched";
        case SampleChoice_CatchAll:
            return "catch-all";
        case SampleChoice_Only:
            return "only";
        default:
            return "none";
    }
}

py::object FailedTuple(const SampleTrial& trial) {
    if (!trial.failed) return py::object();
    const auto& failed = *trial.failed;
    return py::make_tuple(failed.isOptional ? "optional" : "must", failed.index,
                          Text(failed.typeName), Text(failed.value));
}

std::unique_ptr<CTzParser> LoadParser(const std::string& definition) {
    hxJson::Value value;
    hxJson::Reader reader;
    if (!reader.parse(definition, value))
        throw std::invalid_argument("not JSON: " + reader.getErrorMessage());
    auto parser = std::make_unique<CTzParser>();
    if (!parser->SetParser(value)) throw std::invalid_argument("no sample could be loaded");
    return parser;
}

}  // namespace

CParserHandle::CParserHandle(const py::object& definition, int scriptTimeLimit)
    : m_definition(BytesOf(definition.ptr())) {
    const CPythonReleased released;
    m_parser = LoadParser(m_definition);
    m_parser->SetScriptTimeLimit(scriptTimeLimit);
}

py::object CParserHandle::ResultObject(std::shared_ptr<CAppVariableValue> value,
                                       const std::string& error) const {
    if (!value) return Text(error);
    const auto tree = std::make_shared<CResultTree>(std::move(value), m_shape);
    return py::object(CNodeHandle(tree, tree->Root()));
}

py::object CParserHandle::Parse(const py::object& text) {
    const std::string copy(BytesOf(text.ptr()));
    std::string error;
    std::shared_ptr<CAppVariableValue> value;
    {
        const CPythonReleased released;
        value = m_parser->Parse(copy, error);
    }
    return ResultObject(std::move(value), error);
}

py::list CParserHandle::ParseMany(const py::object& texts, int threads) {
    std::vector<py::object> held;  // the texts stay, whatever becomes of the list
    std::vector<std::string_view> views;
    const auto count = py::len(texts);
    for (Py_ssize_t i = 0; i < count; ++i) {
        held.emplace_back(texts[i]);
        views.push_back(BytesOf(held.back().ptr()));
    }
    CParseBatch batch(*m_parser, views);
    bool isWhole = false;
    {
        CPythonReleased released;
        isWhole = batch.Run(threads, [&released] { return released.CheckSignals(); });
    }
    if (!isWhole) py::throw_error_already_set();
    py::list results;
    for (auto& outcome : batch.Outcomes())
        results.append(ResultObject(std::move(outcome.value), outcome.error));
    return results;
}

py::tuple CParserHandle::Identify(const py::object& text) const {
    const auto choice = m_parser->Identify(std::string(BytesOf(text.ptr())));
    py::list trials;
    for (const auto& trial : choice.trials)
        trials.append(py::make_tuple(trial.index, FailedTuple(trial)));
    const bool isNone = choice.reason == SampleChoice_None;
    return py::make_tuple(isNone ? py::object() : py::object(choice.index), NameOf(choice.reason),
                          py::tuple(trials));
}

// A parser of its own gives its variables away: the one that parses would copy them for each result
// from then on.
py::object CParserHandle::Schema() const {
    hxJson::Value document;
    LoadParser(m_definition)->GetVariableTree()->Save(document);
    return Text(document.toString(false));
}
