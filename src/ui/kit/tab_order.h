// Tab from field to field where the toolkit does not know the way: in boxes over the text, which
// are windows of the frame like the text itself.
#pragma once

#include <vector>

class wxKeyEvent;
class wxWindow;

namespace korvant::ui {

/// Tab and Shift+Tab give the keyboard to the next of `order` that takes it, round and round; false
/// for other keys.
bool moveByTab(const std::vector<wxWindow*>& order, const wxKeyEvent& event);

}  // namespace korvant::ui
