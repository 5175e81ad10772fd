#pragma once

// The key-lowering copy, with which a parser definition is taken over whatever the case of its
// keys.
//
//     hxJson::Value lowered;
//     hxJson::CopyWithLowerKeys(read, lowered);   // key "RuleType" becomes "ruletype"
//
// Keeps nothing; may run on any thread as long as no other uses the two values.

#include "host/json/hxvalue.h"
#include "host/runtime/tzexport.h"

namespace hxJson {

// Copies `source` into what `destination` already holds (usually null).
//
// An array: each element that is neither object nor array is appended as it is; for each object or
// array a new null element is appended and the source element copied into that by the same rules.
//
// An object: each member goes under its name with A-Z lowered: an array is copied element by
// element into the member of that name, an object into it by the same rules, anything else is
// assigned to it.
//
// Any other source copies nothing.
//
// So two keys that differ only in case land on one member, in key order (upper case first): arrays
// of both accumulate, objects merge, other values replace. An empty array or object brings nothing,
// and so arrives as null where nothing was before. Strings keep their case. Takes any depth; the
// two values must be apart from each other, neither a part of the other.
TZPARSER_API void CopyWithLowerKeys(const Value& source, Value& destination);

}  // namespace hxJson
