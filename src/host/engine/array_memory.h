// What scripts' arrays take of the memory of a run.
#pragma once

#include <cstddef>

namespace korvant {

/// Makes the array add-on take its memory through the budget of scripts, for all arrays made from
/// now on. Only large buffers of engines that this module configured are counted; an array that
/// would exceed the budget raises "Out of memory" in its script.
void countArrayMemory();

}  // namespace korvant
