#include "host/library/progress.h"

#include <algorithm>

#include "base/system/clock.h"
#include "base/system/os_file.h"

namespace korvant {

namespace {

constexpr std::uint32_t kPassMilliseconds = 20;
constexpr int kPassesBetweenRedraws = 20;
constexpr int kPatienceMilliseconds = 1000;

}  // namespace

CThreadedProgressText::CThreadedProgressText(const ProgressBuffer& caption,
                                             const ProgressBuffer& text)
    : caption_(caption), text_(text) {}

CThreadedProgressText::~CThreadedProgressText() {
    Stop(1);
}

std::shared_ptr<CThreadedProgressText> CThreadedProgressText::begin(
    const ProgressBuffer& caption, const ProgressBuffer& text, MakeWindow makeWindow,
    std::function<void()> onEscape) {
    std::shared_ptr<CThreadedProgressText> progress(new CThreadedProgressText(caption, text));
    progress->makeWindow_ = std::move(makeWindow);
    progress->onEscape_ = std::move(onEscape);
    progress->self_ = progress;
    if (!progress->Start()) progress->self_.reset();
    return progress;
}

std::uint32_t CThreadedProgressText::Main() {
    const std::shared_ptr<CThreadedProgressText> self = std::move(self_);
    keepSignalsAway();
    try {
        const std::unique_ptr<ProgressWindow> window = makeWindow_();
        if (window) refreshUntilEnd(*window);
    } catch (...) {
        // Without a window the script goes on all the same.
    }
    return 0;
}

void CThreadedProgressText::refreshUntilEnd(ProgressWindow& window) {
    int passes = 0;
    while (running_.load()) {
        // A window that is shown first opens without its text, and where it would stand without.
        showNewText(window);
        applyVisibility(window);
        if (window.pollEscape() && !escapePressed_.exchange(true)) onEscape_();
        Wait(kPassMilliseconds);
        if (++passes <= kPassesBetweenRedraws) continue;
        passes = 0;
        window.redraw();
    }
}

void CThreadedProgressText::applyVisibility(ProgressWindow& window) {
    if (visible_.load() == shown_) return;
    shown_ = !shown_;
    window.show(shown_);
}

/// Deliberate: a new caption alone shows nothing; it appears with the next new text.
void CThreadedProgressText::showNewText(ProgressWindow& window) {
    std::string text = readProgress(text_);
    if (text == lastText_) return;
    lastText_ = std::move(text);
    window.setTexts(readProgress(caption_), lastText_);
    window.redraw();
}

void CThreadedProgressText::end() {
    running_.store(false);
    Stop(0);
    for (int waited = 0; IsAlive() && waited < kPatienceMilliseconds; ++waited)
        systemClock().sleep(1);
}

void writeProgress(ProgressBuffer& buffer, std::string_view text) noexcept {
    const std::size_t length = std::min<std::size_t>(text.size(), ProgressBuffer::kSize - 1);
    for (std::size_t i = 0; i < length; ++i) {
        buffer.characters[i + 1].store('\0', std::memory_order_release);
        buffer.characters[i].store(text[i], std::memory_order_release);
    }
}

void clearProgress(ProgressBuffer& buffer) noexcept {
    buffer.characters[0].store('\0');
}

std::string readProgress(const ProgressBuffer& buffer) {
    std::string text;
    for (const std::atomic<char>& character : buffer.characters) {
        const char c = character.load(std::memory_order_acquire);
        if (c == '\0') break;
        text.push_back(c);
    }
    return text;
}

}  // namespace korvant
