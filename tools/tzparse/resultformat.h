#pragma once

#include "outputwriter.h"

class CAppParseRule;

// The parse result document of rules that were run: which rule found what on which lines, for
// editors of definitions. As indented JSON, and as XML.
void WriteResultJson(CAppParseRule& rules, COutputWriter& out);
void WriteResultXml(CAppParseRule& rules, COutputWriter& out);
