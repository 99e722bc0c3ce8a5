// Hearing in time that the process or the user's session ends. One implementation for each
// platform.
#pragma once

#include <functional>

class wxFrame;

namespace korvant::ui::native {

/// While it lives, `keep` is called on the window's thread when the process is told to end or the
/// session ends; what would have happened without goes on afterwards. One at a time.
class EndingWatch {
  public:
    EndingWatch(wxFrame& frame, std::function<void()> keep);
    ~EndingWatch();
    EndingWatch(const EndingWatch&) = delete;
    EndingWatch& operator=(const EndingWatch&) = delete;

    /// While the window's thread is busy, nothing is kept: what there is has been kept before.
    void setBusy(bool busy);

  private:
    struct State;
    State* state_;
};

}  // namespace korvant::ui::native
