// Tests of texts that end the process in builds of the engine that are not ours.
#pragma once

#include <gtest/gtest.h>

#include "host/engine/engine_build.h"

/// At the head of a test: leaves it out on the distribution's engine, whose compiler would end the
/// process; there such a text is compiled in a process of its own.
#define KORVANT_NEEDS_HARDENED_ENGINE() \
    if (!::korvant::engineIsHardened()) GTEST_SKIP() << "ends other engines"
