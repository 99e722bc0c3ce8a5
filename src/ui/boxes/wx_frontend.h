// Windows for what scripts ask and show.
#pragma once

#include "host/services/frontend.h"

namespace korvant::ui {

/// Asks in windows. Without a display it leaves the questions to `fallback`, which is asked for a
/// way to answer them and must outlive this.
class WxFrontend : public Frontend {
  public:
    explicit WxFrontend(Frontend& fallback) : fallback_(fallback) {}

    int messageBox(const MessageBoxRequest& request) override;
    std::int32_t promptInt(const std::string& label, std::int32_t initial) override;
    float promptFloat(const std::string& label, float initial) override;
    double promptDouble(const std::string& label, double initial) override;
    std::string promptString(const std::string& label, const std::string& initial) override;
    bool attended() override;
    std::unique_ptr<ProgressWindow> makeProgressWindow() override;

  private:
    Frontend& fallback_;
};

}  // namespace korvant::ui
