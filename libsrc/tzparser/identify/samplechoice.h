#pragma once

#include <optional>
#include <string>
#include <vector>

// What CTzParser::Identify tells about the choice of a sample for a text.

// Why a sample is chosen.
enum SampleChoice_e {
    SampleChoice_None,      // there is no sample
    SampleChoice_Matched,   // it is the first in "sequences" whose conditions all hold
    SampleChoice_CatchAll,  // no sample in "sequences" fits, and it stands last in "samples"
    SampleChoice_Only,      // the same, and there is no other
};

// A condition that doesn't hold.
struct FailedCondition {
    bool isOptional = false;  // whether it stands among the optional conditions
    int index = 0;            // its "@Index"
    int type = 0;             // its "@Type"
    std::string typeName;     // the kind in words: "Contain any of the strings"
    std::string value;        // its "@Value"
};

// A sample that was tried.
struct SampleTrial {
    int index = 0;                          // its "index"
    std::optional<FailedCondition> failed;  // the first that fails; none: all hold
};

struct SampleChoice {
    SampleChoice_e reason = SampleChoice_None;
    int index = -1;                   // of the chosen sample; -1 when there is none
    std::vector<SampleTrial> trials;  // in the order of trying, each sample once
};
