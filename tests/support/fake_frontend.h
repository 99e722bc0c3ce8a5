// A front end whose answers a test writes down.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/services/frontend.h"

namespace korvant::test {

class FakeFrontend : public Frontend {
  public:
    std::deque<int> answers;               ///< of message boxes; none left: 0
    std::vector<MessageBoxRequest> boxes;  ///< that were asked for
    std::optional<double> number;          ///< entered in every prompt for a number
    std::optional<std::string> text;       ///< entered in every prompt for a text
    std::vector<std::string> labels;
    bool nobody = false;              ///< could have answered
    std::function<void()> meanwhile;  ///< called while a dialog is open
    std::function<std::unique_ptr<ProgressWindow>()> makeWindow;

    int messageBox(const MessageBoxRequest& request) override {
        boxes.push_back(request);
        open("");
        if (answers.empty()) return 0;
        const int answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::int32_t promptInt(const std::string& label, std::int32_t initial) override {
        open(label);
        return number ? static_cast<std::int32_t>(*number) : initial;
    }
    float promptFloat(const std::string& label, float initial) override {
        open(label);
        return number ? static_cast<float>(*number) : initial;
    }
    double promptDouble(const std::string& label, double initial) override {
        open(label);
        return number.value_or(initial);
    }
    std::string promptString(const std::string& label, const std::string& initial) override {
        open(label);
        return text.value_or(initial);
    }
    bool attended() override { return !nobody; }
    std::unique_ptr<ProgressWindow> makeProgressWindow() override {
        return makeWindow ? makeWindow() : nullptr;
    }

  private:
    void open(const std::string& label) {
        labels.push_back(label);
        if (meanwhile) meanwhile();
    }
};

}  // namespace korvant::test
