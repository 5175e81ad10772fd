#pragma once

#include "outputwriter.h"

class CAppVariableValue;

// The binary record of a result, with its schema as the header.
void WriteRecord(const CAppVariableValue& values, COutputWriter& out);
