#pragma once

#include "host/json/hxjson.h"

class CAppParseRuleSample;

// The rules of a sample as a rule document in the shape that loading reads:
//
//     {"parserule": [{"type": 1, "name": "core", "includelines": {"includeline": ["^ip"]}, ...}]}
//
// `CAppParseRuleSample::Save` can't give it: what it writes of filters, paragraphs, tables and
// scripts is the form of stored documents, which loading doesn't read in full. Every key of a kind
// stands in each rule, so two documents of this shape tell by themselves whether the rules are the
// same. Ids, bounds and operations of rules aren't in it, nor the keys of the sample.
//
// Statements are compiled on the way, as a parse would, so that a rule knows the types of its
// variables whatever form it was read from.
hxJson::Value LoadableRules(CAppParseRuleSample& sample);

// Drops the default keyword rules that say nothing and that loading makes by itself.
void DropDefaultRules(hxJson::Value& rules);
