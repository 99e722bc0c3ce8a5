#include "host/run/quiet_frontend.h"

#include "host/run/script_session.h"

namespace korvant {

namespace {

class QuietFrontend final : public Frontend {
    int messageBox(const MessageBoxRequest&) override { return refuse(0); }
    std::int32_t promptInt(const std::string&, std::int32_t initial) override {
        return refuse(initial);
    }
    float promptFloat(const std::string&, float initial) override { return refuse(initial); }
    double promptDouble(const std::string&, double initial) override { return refuse(initial); }
    std::string promptString(const std::string&, const std::string& initial) override {
        return refuse(initial);
    }
    std::unique_ptr<ProgressWindow> makeProgressWindow() override { return nullptr; }

    template <class Answer>
    static Answer refuse(Answer answer) {
        moduleSession().raise(kQuietRefusal);
        return answer;
    }
};

}  // namespace

Frontend& quietFrontend() {
    static QuietFrontend frontend;
    return frontend;
}

}  // namespace korvant
