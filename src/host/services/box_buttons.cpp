#include "host/services/box_buttons.h"

#include <algorithm>

namespace korvant {

namespace {

using namespace box_button;

std::vector<int> baseSet(std::uint32_t set) {
    switch (set) {
        case box_style::kOkCancel:
            return {kOk, kCancel};
        case box_style::kAbortRetryIgnore:
            return {kAbort, kRetry, kIgnore};
        case box_style::kYesNoCancel:
            return {kYes, kNo, kCancel};
        case box_style::kYesNo:
            return {kYes, kNo};
        case box_style::kRetryCancel:
            return {kRetry, kCancel};
        case box_style::kCancelTryContinue:
            return {kCancel, kTryAgain, kContinue};
        case box_style::kContinueAbort:
            return {kContinue, kAbort};
        case box_style::kSkipSkipAllCancel:
            return {kSkip, kSkipAll, kCancel};
        case box_style::kIgnoreIgnoreAllCancel:
            return {kIgnore, kIgnoreAll, kCancel};
        default:
            return {kOk};
    }
}

bool holds(const std::vector<int>& ids, int id) {
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

/// A button for "all" stands beside the one that it extends.
void insertAfter(std::vector<int>& ids, int id, int extension) {
    const auto found = std::find(ids.begin(), ids.end(), id);
    if (found != ids.end()) ids.insert(found + 1, extension);
}

bool alarming(std::uint32_t style) {
    const std::uint32_t icon = style & 0xF0;
    return icon == box_style::kIconError || icon == box_style::kIconWarning;
}

int closeAnswer(const std::vector<int>& ids) {
    for (const int id : {kCancel, kNo})
        if (holds(ids, id)) return id;
    return ids.size() == 1 ? ids.front() : 0;
}

struct Caption {
    int button;
    const char* text;
};

constexpr Caption kEnglish[] = {
    {kOk, "OK"},
    {kCancel, "Cancel"},
    {kAbort, "Abort"},
    {kRetry, "Retry"},
    {kIgnore, "Ignore"},
    {kYes, "Yes"},
    {kNo, "No"},
    {kClose, "Close"},
    {kTryAgain, "Try again"},
    {kContinue, "Continue"},
    {kSkip, "Skip"},
    {kSkipAll, "Skip all"},
    {kIgnoreAll, "Ignore all"},
    {kYesToAll, "Yes to all"},
    {kNoToAll, "No to all"},
    {kMore, "More"},
    {kStopScript, "Stop the script"},
};

}  // namespace

BoxButtons boxButtons(std::uint32_t style, bool offerStop) {
    BoxButtons buttons;
    buttons.ids = baseSet(style & 0xF);
    if (style & box_style::kYesToAll) insertAfter(buttons.ids, kYes, kYesToAll);
    if (style & box_style::kNoToAll) insertAfter(buttons.ids, kNo, kNoToAll);
    buttons.defaultId =
        alarming(style) && holds(buttons.ids, kCancel) ? kCancel : buttons.ids.front();
    buttons.closeId = closeAnswer(buttons.ids);
    if (offerStop) buttons.ids.push_back(kStopScript);
    return buttons;
}

std::string buttonCaption(const MessageBoxRequest& request, int button) {
    const auto own = request.captions.find(static_cast<unsigned long>(button));
    if (own != request.captions.end() && !own->second.empty()) return own->second;
    for (const Caption& caption : kEnglish)
        if (caption.button == button) return caption.text;
    return std::to_string(button);
}

}  // namespace korvant
