// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "processor/Clones.h"

#define SIGNAL_PRIMITIVES_DISPATCH PROCESSOR_DISPATCH
#define SIGNAL_PRIMITIVES_CLONES PROCESSOR_CLONES
