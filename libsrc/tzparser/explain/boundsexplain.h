#pragma once

#include "tzparser/explain/explainscope.h"

#include <functional>

// Finds the bounds of a rule again, run by run, as the rule did it; tells where they stand, or what
// kept the rule from running. `use` gets the number of each run that came to reading lines, with
// its range; the rule then has the status and the replaced lines of that run.
void ExplainBounds(CExplainScope& scope,
                   const std::function<void(std::size_t run, const ExplainRun& range)>& use);
// The same for a rule that does nothing with its lines.
void ExplainBoundsAlone(CExplainScope& scope);
