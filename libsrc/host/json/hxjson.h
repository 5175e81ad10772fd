#pragma once

// The JSON documents of the engine: the node, the reader of texts, and the writing of texts.

#include "host/json/hxreader.h"  // IWYU pragma: export
#include "host/json/hxvalue.h"   // IWYU pragma: export
