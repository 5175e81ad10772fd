#pragma once

#include "top/high.h"
#include "high.h"
