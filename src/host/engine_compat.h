// The script engine, and the one place that knows how its generations differ.
#pragma once

#include <angelscript.h>
