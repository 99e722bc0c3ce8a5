#include "ui/kit/tab_order.h"

#include <wx/event.h>
#include <wx/window.h>

#include <algorithm>

namespace korvant::ui {

bool moveByTab(const std::vector<wxWindow*>& order, const wxKeyEvent& event) {
    if (event.GetKeyCode() != WXK_TAB || (event.GetModifiers() & ~wxMOD_SHIFT) != 0) return false;
    const auto count = order.size();
    const auto found = std::find(order.begin(), order.end(), wxWindow::FindFocus());
    const std::size_t step = event.ShiftDown() ? count - 1 : 1;
    std::size_t at = found == order.end() ? (event.ShiftDown() ? 0 : count - 1)
                                          : static_cast<std::size_t>(found - order.begin());
    for (std::size_t i = 0; i < count; ++i) {
        at = (at + step) % count;
        if (!order[at]->CanAcceptFocus()) continue;
        order[at]->SetFocus();
        break;
    }
    return true;
}

}  // namespace korvant::ui
