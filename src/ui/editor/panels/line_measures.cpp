#include "ui/editor/panels/line_measures.h"

#include <wx/stc/stc.h>

#include <algorithm>

#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

constexpr int kMargin = 3, kRoom = 10;
constexpr int kMeasureStyle = 40, kNeverRanStyle = 41;

}  // namespace

void LineMeasures::show(const std::vector<RunMeasures::Line>& lines) {
    if (!shown_ && lines.empty()) return;
    shown_ = !lines.empty();
    control_.MarginTextClearAll();
    control_.SetMarginType(kMargin, wxSTC_MARGIN_RTEXT);
    for (const auto& [style, colour] :
         {std::pair{kMeasureStyle, look_->secondText}, std::pair{kNeverRanStyle, look_->error}}) {
        control_.StyleSetFont(style, look_.code);
        control_.StyleSetForeground(style, colourOf(colour));
        control_.StyleSetBackground(style, colourOf(look_->editor));
    }
    int widest = 0;
    for (const RunMeasures::Line& line : lines) {
        const wxString text = fromUtf8(line.text);
        control_.MarginSetText(line.line - 1, text);
        control_.MarginSetStyle(line.line - 1, line.neverRan ? kNeverRanStyle : kMeasureStyle);
        widest = std::max(widest, control_.TextWidth(kMeasureStyle, text));
    }
    control_.SetMarginWidth(kMargin, shown_ ? widest + control_.FromDIP(kRoom) : 0);
}

}  // namespace korvant::ui
