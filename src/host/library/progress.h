// The progress display of a run and the thread that keeps it alive.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "host/services/frontend.h"
#include "korvantide/cthread.h"

namespace korvant {

/// Written by the script's thread, read by the progress thread: bounded atomic characters, each
/// write followed by a terminator, so that a reader sees a terminated text at any moment.
struct ProgressBuffer {
    static constexpr int kSize = 100;  ///< terminator included
    std::atomic<char> characters[kSize] = {};
};

#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

/// Owns and refreshes the progress window. The object lives by shared ownership: the run holds
/// one reference and the thread another, so that whoever ends last destroys it and nobody joins
/// the thread from inside.
class CThreadedProgressText : public CThread {
  public:
    /// Makes the window on the thread; null when there is nowhere to show one.
    using MakeWindow = std::function<std::unique_ptr<ProgressWindow>()>;

    /// Starts the thread. The buffers must outlive it. `onEscape` is called on the thread when
    /// Escape was pressed in the window.
    static std::shared_ptr<CThreadedProgressText> begin(const ProgressBuffer& caption,
                                                        const ProgressBuffer& text,
                                                        MakeWindow makeWindow,
                                                        std::function<void()> onEscape);
    /// The thread applies it with its next pass.
    void setVisible(bool visible) noexcept { visible_.store(visible); }
    bool visible() const noexcept { return visible_.load(); }
    /// Asks the thread to end and waits for that, a second at most.
    void end();

  protected:
    std::uint32_t Main() override;

  public:
    virtual ~CThreadedProgressText();

  private:
    CThreadedProgressText(const ProgressBuffer& caption, const ProgressBuffer& text);
    void refreshUntilEnd(ProgressWindow& window);
    void applyVisibility(ProgressWindow& window);
    void showNewText(ProgressWindow& window);

    const ProgressBuffer& caption_;
    const ProgressBuffer& text_;
    MakeWindow makeWindow_;
    std::function<void()> onEscape_;
    std::string lastText_;
    bool shown_ = false;
    std::atomic<bool> running_{true};
    std::atomic<bool> escapePressed_{false};
    std::atomic<bool> visible_{false};
    std::shared_ptr<CThreadedProgressText> self_;  ///< the thread's own reference
};

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

/// Copies at most 99 bytes, each followed by a terminator.
/// Deliberate: an empty text copies nothing, so the buffer keeps what it held; scripts hide the
/// window that way and show it again with the text of before.
void writeProgress(ProgressBuffer& buffer, std::string_view text) noexcept;
/// Empties the buffer.
void clearProgress(ProgressBuffer& buffer) noexcept;
std::string readProgress(const ProgressBuffer& buffer);

}  // namespace korvant
