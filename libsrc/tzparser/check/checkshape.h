#pragma once

#include "host/json/hxjson.h"
#include "tzparser/check/checkreport.h"

#include <string>

// What a key of a definition has to hold.
enum CheckShape_e {
    CheckShape_Array,
    CheckShape_Object,
    CheckShape_ArrayOrObject,
};

// Whether a value has the shape. Another one goes to the report, unless it is null: what isn't
// there is nobody's mistake.
bool HasShape(const hxJson::Value& value, CheckShape_e shape, CCheckReport& report,
              const std::string& path);

// Whether a word is a type that a document may give a variable.
bool IsVariableTypeWord(const std::string& word);
