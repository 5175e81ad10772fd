#pragma once

#include "host/json/hxjson.h"

#include <string>

// Reads a parser definition from a file, or from standard input for "-". Throws CToolError when it
// can't be read or isn't JSON, the latter with the place as NAME:LINE:COLUMN.
hxJson::Value ReadDefinition(const std::string& name);
