#pragma once

#include "tzparser/value/appvariablevalue.h"

#include "pythonsupport.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// ResultShape is what all results of one parser have in common: the definition of their variables
// as a JSON document, in a bytes object that pickles of several results hold once. It is made when
// it is first needed.
struct ResultShape {
    PyRef document;
};

// CResultTree is the result of one parse, which all Python objects that show parts of it own
// together, and its way through a pickle.
//
//     auto tree = std::make_shared<CResultTree>(parser.Parse(text, error), shape);
//     auto again = CResultTree::Restore(tree->Document(), tree->SaveValues());
//
// Used and destroyed by threads that hold the interpreter.
class CResultTree {
public:
    using Properties = std::vector<std::pair<std::string, std::string>>;

    // Takes over a tree that isn't null.
    CResultTree(std::shared_ptr<CAppVariableValue> root, std::shared_ptr<ResultShape> shape);

    CAppVariableValue& Root() const { return *m_root; }
    // Names and texts of the root's built-in properties.
    const Properties& BuiltIns() const { return m_builtIns; }

    // The definition of the tree's variables, a bytes object that lives as long as the shape.
    PyObject* Document() const;
    // Positions and texts of all values, and the built-in properties, as bytes that are the same on
    // every machine.
    std::string SaveValues() const;

    // The tree of the two. Throws std::invalid_argument when they aren't what a tree has saved.
    static std::shared_ptr<CResultTree> Restore(PyObject* document, std::string_view values);

private:
    std::shared_ptr<CAppVariableValue> m_root;
    std::shared_ptr<ResultShape> m_shape;
    Properties m_builtIns;
};
