// Progress as a line below the text of a terminal.
#pragma once

#include <functional>

#include "base/system/gathered_output.h"
#include "host/services/frontend.h"

namespace korvant {

/// Gone when it is destroyed. `columns` answers the terminal's width.
class StatusLine final : public ProgressWindow {
  public:
    StatusLine(GatheredOutput& output, std::function<int()> columns);
    ~StatusLine() override;
    void show(bool visible) override;
    void setTexts(const std::string& caption, const std::string& text) override;
    void redraw() override;
    /// Keys belong to the script; Ctrl+C stops it.
    bool pollEscape() override { return false; }

  private:
    GatheredOutput& output_;
    std::function<int()> columns_;
    std::string line_;
    bool visible_ = false;
};

}  // namespace korvant
