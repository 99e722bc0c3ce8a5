#include "ui/console/console_window.h"

#include <wx/evtloop.h>
#include <wx/timer.h>

#include <cerrno>
#include <utility>

#include "base/text/text_encoding.h"
#include "ui/console/console_frame.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::ui {
namespace {

constexpr auto kBetweenPaintings = std::chrono::milliseconds(30);
constexpr int kBetweenStopQueries = 25;
constexpr std::size_t kMostTypedKeys = 1'000'000;

class Ticker : public wxTimer {
  public:
    explicit Ticker(std::function<void()> tick) : tick_(std::move(tick)) {}
    void Notify() override { tick_(); }

  private:
    std::function<void()> tick_;
};

bool stopped(StopQuery shouldStop) {
    return shouldStop && shouldStop();
}

}  // namespace

ConsoleWindow::ConsoleWindow(Console& fallback)
    : fallback_(fallback),
      ownGrid_(std::make_unique<ConsoleGrid>()),
      grid_(*ownGrid_),
      line_(grid_) {}

ConsoleWindow::ConsoleWindow(Console& fallback, ConsoleGrid& grid, ConsoleView& place)
    : fallback_(fallback), grid_(grid), line_(grid_), place_(&place) {}

ConsoleWindow::~ConsoleWindow() {
    release();
}

bool ConsoleWindow::inWindow() const {
    return view_ && toolkitUsable();
}

std::uint32_t ConsoleWindow::allocate(ConsoleInfo& info) {
    if (!startToolkit()) return fallback_.allocate(info);
    place_ ? useView(*place_) : makeFrame();
    info = {ConsoleGrid::kColumns, ConsoleGrid::kRows, ConsoleGrid::kGreyOnBlack,
            ConsoleGrid::kShownRows};
    return 0;
}

void ConsoleWindow::makeFrame() {
    if (frame_) return;
    frame_ = new ConsoleFrame(grid_);
    frame_->onDestroy = [this] {
        frame_ = nullptr;
        view_ = nullptr;
    };
    useView(*frame_);
}

void ConsoleWindow::useView(ConsoleView& view) {
    view_ = &view;
    ConsoleCanvas& canvas = view.canvas();
    canvas.onKey = [this](const ConsoleKey& key) { keyPressed(key); };
    canvas.onInterrupt = [this] {
        if (!inUse_)
            view_->canvas().copy();
        else if (interrupt_)
            interrupt_();
    };
    canvas.mayAsk = [this] { return waiting_; };
}

void ConsoleWindow::leaveView() {
    ConsoleCanvas& canvas = std::exchange(view_, nullptr)->canvas();
    canvas.onKey = nullptr;
    canvas.onInterrupt = nullptr;
    canvas.mayAsk = nullptr;
}

std::uint32_t ConsoleWindow::release() {
    if (!view_) return place_ ? 0 : fallback_.release();
    hide();
    leaveView();
    ConsoleFrame* const frame = std::exchange(frame_, nullptr);
    if (!frame) return 0;
    // The toolkit destroys it later, when this object may be gone.
    frame->onDestroy = nullptr;
    if (toolkitUsable()) frame->Destroy();
    return 0;
}

void ConsoleWindow::setUp(const ConsoleInfo& info) {
    if (!inWindow()) fallback_.setUp(info);
    if (info.attributes != 0) grid_.setAttributes(info.attributes);
}

bool ConsoleWindow::write(std::string_view bytes) {
    if (!inWindow()) return fallback_.write(bytes);
    grid_.write(bytes);
    refreshIfDue();
    return true;
}

bool ConsoleWindow::flush() {
    if (!inWindow()) return fallback_.flush();
    refresh();
    return true;
}

void ConsoleWindow::refreshIfDue() {
    if (std::chrono::steady_clock::now() - painted_ >= kBetweenPaintings) refresh();
}

void ConsoleWindow::refresh() {
    if (!view_->isSeen()) return;
    if (waiting_)
        view_->canvas().update();
    else
        view_->paintNow();
    painted_ = std::chrono::steady_clock::now();
}

void ConsoleWindow::keyPressed(const ConsoleKey& key) {
    if (inUse_ && typed_.size() < kMostTypedKeys) typed_.push_back(key);
    if (wake_) wake_();
}

bool ConsoleWindow::waitUntil(const std::function<bool()>& ready, StopQuery shouldStop) {
    refresh();
    if (ready()) return true;
    if (stopped(shouldStop)) return false;
    waiting_ = true;
    waited_ = true;
    bool answered = false;
    runModal([&] { view_->whileTyping([&] { answered = loopUntil(ready, shouldStop); }); });
    waiting_ = false;
    return answered;
}

bool ConsoleWindow::loopUntil(const std::function<bool()>& ready, StopQuery shouldStop) {
    bool answered = false;
    wxEventLoop loop;
    const LoopGuard guard([&] { loop.ScheduleExit(); });
    wake_ = [&] {
        if (!answered && ready()) {
            answered = true;
            loop.ScheduleExit();
        }
        view_->canvas().update();
    };
    Ticker ticker([&] {
        if (!inWindow() || stopped(shouldStop)) loop.ScheduleExit();
    });
    ticker.Start(kBetweenStopQueries);
    loop.Run();
    wake_ = nullptr;
    return answered;
}

bool ConsoleWindow::takeTypedKeys() {
    while (!typed_.empty() && !lineEntered_) {
        const ConsoleKey key = typed_.front();
        typed_.pop_front();
        if (!line_.handle(key)) continue;
        lineEntered_ = true;
        if (!line_.endOfInput()) enterLine(encodeTyped(line_.result()));
    }
    return lineEntered_;
}

void ConsoleWindow::enterLine(std::string_view bytes) {
    for (const char c : bytes) input_.push_back(static_cast<unsigned char>(c));
    input_.push_back('\n');
}

int ConsoleWindow::readChar(StopQuery shouldStop) {
    if (!inWindow()) return fallback_.readChar(shouldStop);
    if (input_.empty() && !fed_.empty()) {
        enterLine(fed_.front());
        fed_.pop_front();
    }
    if (input_.empty()) {
        lineEntered_ = false;
        line_.begin();
        if (!waitUntil([this] { return takeTypedKeys(); }, shouldStop)) {
            line_.abandon();
            return inWindow() ? kStopped : kEndOfInput;
        }
        if (input_.empty()) return kEndOfInput;
    }
    const int byte = input_.front();
    input_.pop_front();
    return byte;
}

void ConsoleWindow::unreadChar(int byte) {
    if (!inWindow())
        fallback_.unreadChar(byte);
    else if (byte >= 0)
        input_.push_front(byte);
}

void ConsoleWindow::dropTyped() {
    inWindow() ? input_.clear() : fallback_.dropTyped();
}

bool ConsoleWindow::takeWaited() {
    const bool waited = std::exchange(waited_, false);
    return fallback_.takeWaited() || waited;
}

int ConsoleWindow::readKey(StopQuery shouldStop) {
    if (!inWindow()) return fallback_.readKey(shouldStop);
    grid_.finishSequence();
    while (codes_.empty()) {
        if (!waitUntil([this] { return !typed_.empty(); }, shouldStop))
            return inWindow() ? kStopped : kEndOfInput;
        for (const int code : consoleKeyCodes(typed_.front())) codes_.push_back(code);
        typed_.pop_front();
    }
    const int code = codes_.front();
    codes_.pop_front();
    return code;
}

void ConsoleWindow::clear() {
    if (!inWindow()) fallback_.clear();
    grid_.clear();
    if (inWindow()) view_->emptied();
}

std::uint16_t ConsoleWindow::attributes() {
    return inWindow() ? grid_.attributes() : fallback_.attributes();
}

void ConsoleWindow::setAttributes(std::uint16_t attributes) {
    if (!inWindow()) fallback_.setAttributes(attributes);
    grid_.setAttributes(attributes);
}

void ConsoleWindow::moveCursor(std::int16_t column, std::int16_t row) {
    if (!inWindow()) fallback_.moveCursor(column, row);
    grid_.moveCursor(column, row);
}

void ConsoleWindow::show() {
    inUse_ = true;
    inWindow() ? view_->appear(interrupt_) : fallback_.show();
}

void ConsoleWindow::hide() {
    inUse_ = false;
    typed_.clear();
    input_.clear();
    codes_.clear();
    inWindow() ? view_->disappear() : fallback_.hide();
}

void ConsoleWindow::setTitle(std::string_view title) {
    inWindow() ? view_->setTitle(toDisplay(title)) : fallback_.setTitle(title);
}

void ConsoleWindow::onInterrupt(void (*handler)() noexcept) {
    interrupt_ = handler;
}

}  // namespace korvant::ui
