#pragma once

#include "high.h"
#include "top/high.h"
