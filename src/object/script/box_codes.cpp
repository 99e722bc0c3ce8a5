#include "object/script/box_codes.h"

#include <algorithm>
#include <iterator>

#include "host/services/frontend.h"
#include "korvantide/script_object.h"

namespace korvant {

namespace {

struct NamedCode {
    std::string_view name;
    std::int32_t value;
};

constexpr NamedCode kConstants[] = {
    {"BU_ABORT_RETRY_IGNORE", ScriptObject::BU_ABORT_RETRY_IGNORE},
    {"BU_CANCEL_TRY_CONTINUE", ScriptObject::BU_CANCEL_TRY_CONTINUE},
    {"BU_CONTINUE_ABORT", ScriptObject::BU_CONTINUE_ABORT},
    {"BU_IGNORE_ALL_CANCEL", ScriptObject::BU_IGNORE_ALL_CANCEL},
    {"BU_RETRY_CANCEL", ScriptObject::BU_RETRY_CANCEL},
    {"BU_SKIP_ALL_CANCEL", ScriptObject::BU_SKIP_ALL_CANCEL},
    {"BU_YES_NO", ScriptObject::BU_YES_NO},
    {"BU_YES_NO_CANCEL", ScriptObject::BU_YES_NO_CANCEL},
    {"BU_YES_NO_ALL", ScriptObject::BU_YES_NO_ALL},
    {"BU_YES_NO_ALL_CANCEL", ScriptObject::BU_YES_NO_ALL_CANCEL},
    {"BU_YES_ALL_NO", ScriptObject::BU_YES_ALL_NO},
    {"BU_YES_ALL_NO_CANCEL", ScriptObject::BU_YES_ALL_NO_CANCEL},
    {"BU_YES_ALL_NO_ALL", ScriptObject::BU_YES_ALL_NO_ALL},
    {"BU_YES_ALL_NO_ALL_CANCEL", ScriptObject::BU_YES_ALL_NO_ALL_CANCEL},
    {"BU_OK", ScriptObject::BU_OK},
    {"BU_OK_CANCEL", ScriptObject::BU_OK_CANCEL},
    {"IC_WARNING", ScriptObject::IC_WARNING},
    {"IC_ERROR", ScriptObject::IC_ERROR},
    {"IC_INFORMATION", ScriptObject::IC_INFORMATION},
    {"IC_QUESTION", ScriptObject::IC_QUESTION},
    {"ID_ABORT", ScriptObject::ID_ABORT},
    {"ID_CANCEL", ScriptObject::ID_CANCEL},
    {"ID_CLOSE", ScriptObject::ID_CLOSE},
    {"ID_CONTINUE", ScriptObject::ID_CONTINUE},
    {"ID_IGNORE", ScriptObject::ID_IGNORE},
    {"ID_IGNOREALL", ScriptObject::ID_IGNOREALL},
    {"ID_NO", ScriptObject::ID_NO},
    {"ID_NOTOALL", ScriptObject::ID_NOTOALL},
    {"ID_OK", ScriptObject::ID_OK},
    {"ID_RETRY", ScriptObject::ID_RETRY},
    {"ID_SKIP", ScriptObject::ID_SKIP},
    {"ID_SKIPALL", ScriptObject::ID_SKIPALL},
    {"ID_TRYAGAIN", ScriptObject::ID_TRYAGAIN},
    {"ID_YES", ScriptObject::ID_YES},
    {"ID_YESTOALL", ScriptObject::ID_YESTOALL},
};

/// By BU_ code, from 1.
constexpr std::uint32_t kStyles[] = {
    box_style::kAbortRetryIgnore,
    box_style::kCancelTryContinue,
    box_style::kContinueAbort,
    box_style::kIgnoreIgnoreAllCancel,
    box_style::kRetryCancel,
    box_style::kSkipSkipAllCancel,
    box_style::kYesNo,
    box_style::kYesNoCancel,
    box_style::kYesNo | box_style::kNoToAll,
    box_style::kYesNoCancel | box_style::kNoToAll,
    box_style::kYesNo | box_style::kYesToAll,
    box_style::kYesNoCancel | box_style::kYesToAll,
    box_style::kYesNo | box_style::kYesToAll | box_style::kNoToAll,
    box_style::kYesNoCancel | box_style::kYesToAll | box_style::kNoToAll,
    box_style::kOk,
    box_style::kOkCancel,
};

/// Topmost, and the bit by which the box component knows boxes of scripts.
constexpr std::uint32_t kAlways = 0x40040000;

std::uint32_t iconBits(std::int32_t icon) {
    switch (icon) {
        case ScriptObject::IC_WARNING:
            return box_style::kIconWarning;
        case ScriptObject::IC_ERROR:
            return box_style::kIconError;
        case ScriptObject::IC_INFORMATION:
            return box_style::kIconInformation;
        case ScriptObject::IC_QUESTION:
            return box_style::kIconQuestion;
        default:
            return 0;
    }
}

struct Answer {
    int button;
    std::int32_t code;
};

constexpr Answer kAnswers[] = {
    {box_button::kOk, ScriptObject::ID_OK},
    {box_button::kCancel, ScriptObject::ID_CANCEL},
    {box_button::kAbort, ScriptObject::ID_ABORT},
    {box_button::kRetry, ScriptObject::ID_RETRY},
    {box_button::kIgnore, ScriptObject::ID_IGNORE},
    {box_button::kYes, ScriptObject::ID_YES},
    {box_button::kNo, ScriptObject::ID_NO},
    {box_button::kClose, ScriptObject::ID_CLOSE},
    {box_button::kTryAgain, ScriptObject::ID_TRYAGAIN},
    {box_button::kContinue, ScriptObject::ID_CONTINUE},
    {box_button::kSkip, ScriptObject::ID_SKIP},
    {box_button::kSkipAll, ScriptObject::ID_SKIPALL},
    {box_button::kIgnoreAll, ScriptObject::ID_IGNOREALL},
    {box_button::kYesToAll, ScriptObject::ID_YESTOALL},
    {box_button::kNoToAll, ScriptObject::ID_NOTOALL},
};

}  // namespace

std::int32_t boxConstant(std::string_view name) {
    const auto named = [name](const NamedCode& one) { return one.name == name; };
    const auto* found = std::find_if(std::begin(kConstants), std::end(kConstants), named);
    return found == std::end(kConstants) ? 0 : found->value;
}

std::uint32_t boxStyle(std::int32_t buttons, std::int32_t icon) {
    const bool known = buttons >= 1 && buttons <= static_cast<std::int32_t>(std::size(kStyles));
    const std::uint32_t style = known ? kStyles[buttons - 1] : box_style::kOk;
    return style | iconBits(icon) | kAlways;
}

std::int32_t boxAnswer(int button) {
    const auto same = [button](const Answer& one) { return one.button == button; };
    const auto* found = std::find_if(std::begin(kAnswers), std::end(kAnswers), same);
    return found == std::end(kAnswers) ? 0 : found->code;
}

}  // namespace korvant
