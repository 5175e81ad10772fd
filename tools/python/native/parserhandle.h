#pragma once

#include "tzparser/engine/tzparser.h"

#include "pythonsupport.h"
#include "resulttree.h"

#include <memory>
#include <string>

#include <boost/python/list.hpp>
#include <boost/python/object.hpp>
#include <boost/python/tuple.hpp>

// CParserHandle is a loaded definition as Python sees it, the class "Definition" of the module. It
// doesn't change after it was made, so any number of Python's threads may use it at once; other
// threads have the interpreter while it loads and parses.
class CParserHandle {
public:
    // Loads the bytes of a JSON text; the limit of scripts is in milliseconds, 0 is none. Throws
    // std::invalid_argument when the text is no JSON or no sample of it can be loaded, with the
    // reason.
    CParserHandle(const boost::python::object& definition, int scriptTimeLimit);

    // The root of the result, a CNodeHandle; on failure the reason as a text.
    boost::python::object Parse(const boost::python::object& text);
    // The same for each of a list of bytes objects, in its order. Throws
    // boost::python::error_already_set with a pending KeyboardInterrupt when it was interrupted.
    boost::python::list ParseMany(const boost::python::object& texts, int threads);
    // (sample or None, reason, ((sample, None or (list, index, kind, value)), ...)).
    boost::python::tuple Identify(const boost::python::object& text) const;
    // The variables as a JSON text.
    boost::python::object Schema() const;

private:
    boost::python::object ResultObject(std::shared_ptr<CAppVariableValue> value,
                                       const std::string& error) const;

    std::string m_definition;
    std::unique_ptr<CTzParser> m_parser;
    std::shared_ptr<ResultShape> m_shape = std::make_shared<ResultShape>();
};
