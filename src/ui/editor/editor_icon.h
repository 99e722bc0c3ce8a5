// The program's icon, so that the module needs no file beside it.
#pragma once

#include <cstddef>

namespace korvant::ui {

extern const unsigned char kEditorIconPng[];
extern const std::size_t kEditorIconPngSize;

}  // namespace korvant::ui
