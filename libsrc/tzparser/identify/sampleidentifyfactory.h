#pragma once

#include "tzparser/identify/canvasnodecmdsampleidentifyconditionbase.h"

// The factory of the process for conditions, with the five kinds in it. It is made at the first
// use and lives to the end of the process. A host may register kinds of its own, before any thread
// loads a definition.
//
//     auto condition = SampleIdentifyConditionFactory().Create(3);    // null for an unknown kind
TZPARSER_API CDynCreateFactory<CCanvasNodeCmdSampleIdentifyConditionBase>&
SampleIdentifyConditionFactory();
