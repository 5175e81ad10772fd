#pragma once

#include "tzparser/variable/appdatatype.h"

#include "pythonsupport.h"
#include "resulttree.h"

#include <memory>
#include <string>

#include <boost/python/dict.hpp>
#include <boost/python/list.hpp>
#include <boost/python/object.hpp>
#include <boost/python/tuple.hpp>

// CNodeHandle is one node of a result as Python sees it, the class "Node" of the module: it makes
// objects of what it is asked for and of nothing else, and keeps the whole result alive.
//
// An index is 0-based; one that has no value gives what a value that wasn't found gives. A value is
// the object that scripts know for its data type, the text for a type without such an object, and
// None when nothing was found or the text is no value of the type. Rows are 0-based, columns
// 0-based bytes, ends exclusive. For threads that hold the interpreter.
class CNodeHandle {
public:
    CNodeHandle(std::shared_ptr<CResultTree> tree, CAppVariableValue& node);

    // The name without the dollar signs in front.
    boost::python::object Name() const;
    // "table", "column", "group" for a node with named parts, "value" for any other.
    const char* Kind() const;
    // The display name of the type of its values: "int", "IP".
    std::string Type() const;
    // How many values it has; of a table the length of its longest column.
    std::size_t Count() const;
    boost::python::list Children() const;

    boost::python::object Text(std::size_t index) const;
    boost::python::object Span(std::size_t index) const;  // ((row, column), (row, column)) or None
    boost::python::tuple Lines(std::size_t index) const;
    boost::python::object Value(std::size_t index) const;
    bool IsFound(std::size_t index) const;

    // The first so many values at once; behind the last one there is None, or the empty text.
    boost::python::list Texts(std::size_t count) const;
    boost::python::list Values(std::size_t count) const;
    boost::python::list Spans(std::size_t count) const;
    // The rows of a table as dicts of values.
    boost::python::list Rows() const;

    boost::python::dict BuiltIns() const;
    // What a pickle holds of the node: the arguments of Restore.
    boost::python::tuple State() const;
    // The node at a path of child numbers in the tree that `document` and `values` hold. Throws
    // std::invalid_argument when they hold none.
    static CNodeHandle Restore(const boost::python::object& document,
                               const boost::python::object& values,
                               const boost::python::object& path);

private:
    const CAppTextLet* LetAt(std::size_t index) const;
    AppDataType_e ElementType() const;
    boost::python::list Path() const;

    std::shared_ptr<CResultTree> m_tree;
    CAppVariableValue* m_node;
};
