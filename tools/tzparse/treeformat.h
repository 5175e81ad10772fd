#pragma once

#include "outputwriter.h"

class CAppVariableValue;

// Writes a value tree with all that it holds: of each node the name, the number of its data type
// (and of an array's elements), all values with their spans, the nodes below it, its properties and
// its built-in properties. Members that would be empty are left out, but for name and type.
void WriteTree(const CAppVariableValue& root, COutputWriter& out);
