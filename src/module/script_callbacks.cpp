// What a host is told of while its scripts run, and how it answers their boxes.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "base/text/number_text.h"
#include "host/library/dialog_functions.h"
#include "host/library/script_console.h"
#include "host/run/script_session.h"
#include "host/services/box_buttons.h"
#include "korvantide/host_interface.h"
#include "module/guarded.h"
#include "module/message_record.h"

using namespace korvant;

namespace {

static_assert(KORVANT_BUTTON_STOP_SCRIPT == box_button::kStopScript);
static_assert(KORVANT_BUTTON_NO_TO_ALL == box_button::kNoToAll);
static_assert(KORVANT_BOX_RETRY_CANCEL == box_style::kRetryCancel);
static_assert(KORVANT_BOX_INFORMATION == box_style::kIconInformation);

/// Whoever answers faster is nobody who reads: the time limit does not begin anew then, or a loop
/// around a question would never end.
constexpr std::uint64_t kReaderMs = 100;

/// What a host's function throws ends here: it is as if it had not been there.
template <class Result, class Call>
Result quietly(Result otherwise, Call call) noexcept {
    try {
        return call();
    } catch (...) {
        return otherwise;
    }
}

/// A box as the host sees it. The record points into this and into the texts that it was made of.
struct HostBox {
    explicit HostBox(std::int32_t kind) {
        record.size = sizeof record;
        record.kind = kind;
        record.caption = record.text = record.details = record.offered = "";
        record.company = record.module = "";
    }
    HostBox(const HostBox&) = delete;
    HostBox& operator=(const HostBox&) = delete;

    void setButtons(const BoxButtons& buttons, const MessageBoxRequest& request) {
        ids.assign(buttons.ids.begin(), buttons.ids.end());
        for (const int id : buttons.ids) captions.push_back(buttonCaption(request, id));
        for (const std::string& caption : captions) captionTexts.push_back(caption.c_str());
        record.buttonCount = static_cast<std::uint32_t>(ids.size());
        record.buttons = ids.data();
        record.captions = captionTexts.data();
        record.closeButton = buttons.closeId;
    }

    KorvantBox record{};
    std::vector<std::int32_t> ids;
    std::vector<std::string> captions;
    std::vector<const char*> captionTexts;
};

bool isAmong(const KorvantBox& box, std::int32_t button) {
    return std::find(box.buttons, box.buttons + box.buttonCount, button) !=
           box.buttons + box.buttonCount;
}

std::int32_t asInteger(double number) {
    if (std::isnan(number)) return 0;
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(
        std::clamp(number, static_cast<double>(least), static_cast<double>(most)));
}

/// Stands before the front end, the console and the list of messages.
class HostCallbacks final : public Frontend, public RunParticipant, public PrintListener {
  public:
    void set(const KorvantCallbacks& callbacks) {
        callbacks_ = callbacks;
        const bool boxes = callbacks.box != nullptr || callbacks.answerBox != nullptr;
        moduleSession().coverFrontend(boxes ? this : nullptr);
        scriptConsole().removeListener(*this);
        if (callbacks.print != nullptr) scriptConsole().addListener(*this);
        moduleSession().join(*this);
    }

    // The front end.

    int messageBox(const MessageBoxRequest& request) override {
        HostBox box(request.runReport ? KORVANT_BOX_RUN_REPORT : KORVANT_BOX_MESSAGE);
        box.record.style = request.style & 0xFF;
        box.record.markup = !request.plain;
        box.record.caption = request.caption.c_str();
        box.record.text = request.text.c_str();
        box.record.details = request.details.c_str();
        box.setButtons(boxButtons(request.style, request.offerStop), request);
        KorvantBoxAnswer answer{};
        if (!answers(box, answer)) return shown().messageBox(request);
        return isAmong(box.record, answer.button) ? answer.button : box.record.closeButton;
    }

    std::int32_t promptInt(const std::string& label, std::int32_t initial) override {
        KorvantBoxAnswer answer{};
        HostBox box(KORVANT_BOX_INTEGER);
        if (!asks(box, label, formatInt(initial), answer)) return shown().promptInt(label, initial);
        return answer.button == KORVANT_BUTTON_OK ? asInteger(answer.number) : initial;
    }

    float promptFloat(const std::string& label, float initial) override {
        KorvantBoxAnswer answer{};
        HostBox box(KORVANT_BOX_REAL);
        if (!asks(box, label, formatShortest(initial), answer))
            return shown().promptFloat(label, initial);
        return answer.button == KORVANT_BUTTON_OK ? static_cast<float>(answer.number) : initial;
    }

    double promptDouble(const std::string& label, double initial) override {
        KorvantBoxAnswer answer{};
        HostBox box(KORVANT_BOX_REAL);
        if (!asks(box, label, formatShortest(initial), answer))
            return shown().promptDouble(label, initial);
        return answer.button == KORVANT_BUTTON_OK ? answer.number : initial;
    }

    std::string promptString(const std::string& label, const std::string& initial) override {
        KorvantBoxAnswer answer{};
        HostBox box(KORVANT_BOX_TEXT);
        if (!asks(box, label, initial, answer)) return shown().promptString(label, initial);
        if (answer.button != KORVANT_BUTTON_OK) return initial;
        return answer.text != nullptr ? answer.text : "";
    }

    bool attended() override { return answered_ ? read_ : shown().attended(); }

    std::unique_ptr<ProgressWindow> makeProgressWindow() override {
        return shown().makeProgressWindow();
    }

    // What is printed, and what the compiler says.

    bool takes(std::string_view bytes) override {
        return quietly(false, [&] {
            return callbacks_.print(callbacks_.user, bytes.data(), bytes.size()) != 0;
        });
    }
    void printed(std::string_view) override {}

    void built(const BuildMessages& messages) override {
        if (callbacks_.message == nullptr) return;
        for (const BuildMessage& message : messages.all()) {
            const KorvantBuildMessage record = toRecord(message);
            quietly(0, [&] {
                callbacks_.message(callbacks_.user, &record);
                return 0;
            });
        }
    }

  private:
    static Frontend& shown() { return moduleSession().coveredFrontend(); }

    bool asks(HostBox& box, const std::string& label, const std::string& offered,
              KorvantBoxAnswer& answer) {
        MessageBoxRequest request;
        request.style = box_style::kOkCancel;
        box.record.style = box_style::kOkCancel;
        box.record.caption = kModuleCaption;
        box.record.text = label.c_str();
        box.record.offered = offered.c_str();
        box.setButtons(boxButtons(request.style, false), request);
        return answers(box, answer);
    }

    /// True when the host answered.
    bool answers(HostBox& box, KorvantBoxAnswer& answer) {
        answered_ = false;
        answer.size = sizeof answer;
        answer.button = box.record.closeButton;
        quietly(0, [&] {
            if (callbacks_.box != nullptr) callbacks_.box(callbacks_.user, &box.record);
            return 0;
        });
        if (callbacks_.answerBox == nullptr) return false;
        Clock& clock = *moduleSession().services().clock;
        const std::uint64_t began = clock.monotonic();
        answered_ = quietly(false, [&] {
            return callbacks_.answerBox(callbacks_.user, &box.record, &answer) != 0;
        });
        read_ = clock.monotonic() - began >= kReaderMs;
        return answered_;
    }

    KorvantCallbacks callbacks_{};
    bool answered_ = false;  ///< the last box, by the host
    bool read_ = false;      ///< by somebody who read it
};

/// Never destroyed.
HostCallbacks& hostCallbacks() {
    static auto* const callbacks = new HostCallbacks;
    return *callbacks;
}

std::int32_t setCallbacks(const KorvantCallbacks* given) {
    KorvantCallbacks callbacks{};
    if (moduleSession().running()) return 0;
    if (given != nullptr) {
        if (given->size < sizeof given->size || given->size > sizeof callbacks) return 0;
        std::memcpy(&callbacks, given, given->size);
    }
    hostCallbacks().set(callbacks);
    return 1;
}

std::string textOf(const char* text) {
    return text != nullptr ? text : "";
}

std::int32_t showBox(const KorvantBox& given) {
    if (given.size < sizeof given.size || given.size > sizeof given) return 0;
    KorvantBox box{};
    std::memcpy(&box, &given, given.size);
    MessageBoxRequest request;
    request.caption = textOf(box.caption);
    request.text = textOf(box.text);
    request.details = textOf(box.details);
    request.style = box.style & 0xFF;
    request.plain = box.markup == 0;
    request.countdownSeconds = box.countdownSeconds;
    request.offerDoNotShow = box.offerDoNotShow != 0;
    request.company = textOf(box.company);
    request.module = textOf(box.module);
    const InteractionScope waiting;
    scriptConsole().flush();
    const UiScopeGuard resources;
    return moduleSession().coveredFrontend().messageBox(request);
}

}  // namespace

std::int32_t KORVANTIDE_CALL SetScriptCallbacks(const KorvantCallbacks* callbacks) {
    return guarded(0, [&] { return setCallbacks(callbacks); });
}

std::int32_t KORVANTIDE_CALL ShowScriptBox(const KorvantBox* box) {
    return guarded(0, [&] { return box != nullptr ? showBox(*box) : 0; });
}
