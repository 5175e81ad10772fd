#pragma once

#include "outputwriter.h"

class CAppVariableValue;

// Writes a value tree as the object that a person or a script wants: each variable by its name with
// its first value, typed; a table as an array of row objects; a node with nodes below it as an
// object. Members stand in the order of the tree.
void WriteValues(const CAppVariableValue& root, COutputWriter& out);
