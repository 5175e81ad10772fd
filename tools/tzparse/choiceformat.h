#pragma once

#include "tzparser/identify/samplechoice.h"

#include "outputwriter.h"

#include <string>
#include <vector>

// The choice of a sample as lines for people: one for each sample tried, then the sample chosen
// with the reason. Control characters of the definition are shown as "?".
std::vector<std::string> ChoiceLines(const SampleChoice& choice);

// The same lines, each with a line feed.
void WriteChoice(const SampleChoice& choice, COutputWriter& out);

// The same as a JSON object:
//
//     {"sample": 2, "reason": "matched", "tried": [
//         {"sample": 1, "failed": {"list": "must", "index": 1, "type": 1,
//                                  "kind": "Contain all of strings", "value": "NX-OS"}},
//         {"sample": 2, "failed": null}]}
//
// The reason is "matched", "catch-all", "only" or, with the sample null, "none".
void WriteChoiceJson(const SampleChoice& choice, COutputWriter& out);
