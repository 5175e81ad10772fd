#pragma once

#include "host/json/hxjson.h"
#include "tzparser/check/checkreport.h"

#include <string>

// Checks the identify document of a sample: its shape, and each condition as its own kind reads it.
// `path` is that of the sample. False when the document is no JSON, so that the sample can't be
// loaded; that is reported here.
bool CheckIdentify(const hxJson::Value& sample, CCheckReport& report, const std::string& path);
