#pragma once

#include "host/json/hxjson.h"

class CCanvasNodeCmdSampleIdentify;

// The conditions as an identify document that loading reads in full, which what
// `CCanvasNodeCmdSampleIdentify::Save` writes of the optional ones isn't. Both lists are there,
// empty ones too.
hxJson::Value IdentifyDocument(const CCanvasNodeCmdSampleIdentify& identify);
