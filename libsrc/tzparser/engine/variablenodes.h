#pragma once

#include "tzparser/variable/appvariabledef.h"

#include <memory>
#include <string>

// What the kinds of rules share when they add their variables to the variable tree.

// A name without the "$" characters in front.
std::string WithoutDollars(const std::string& name);

// A node that the parser fills. Inside a table a variable is a column of elements of the type,
// elsewhere a plain node. The parent doesn't have it yet.
std::unique_ptr<CAppVariableDef> MakeVariable(CAppVariableDef& parent, const std::string& name,
                                              AppDataType_e type, bool inTable);
