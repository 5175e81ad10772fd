#pragma once

#include "host/runtime/tzexport.h"

#include <string>
#include <vector>

// One thing that a document holds and the converted one doesn't.
struct TZPARSER_API ConversionLoss {
    // The path to it in the document that was converted, array indexes from 0; behind the path of a
    // part of a rule, the rule's kind and name: `samples[0].parserRules.parserule[2].idlines
    // (paragraph "ports")`. A path of more than 400 bytes is cut in its middle.
    std::string place;
    // What becomes of it.
    std::string reason;
};

using ConversionLosses = std::vector<ConversionLoss>;
