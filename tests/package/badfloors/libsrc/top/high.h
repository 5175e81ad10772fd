#pragma once

#include "ground/low.h"
