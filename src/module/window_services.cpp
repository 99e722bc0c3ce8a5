#include "module/window_services.h"

#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <new>

#include "base/system/gathered_output.h"
#include "base/system/os_file.h"
#include "host/run/script_session.h"
#include "host/terminal/pipe_console.h"
#include "host/terminal/stream_input.h"
#include "host/terminal/terminal_frontend.h"
#include "module/korvant_ide_app.h"
#include "module/own_looks.h"
#include "module/window_console.h"
#include "object/script/object_editor.h"
#include "ui/boxes/wx_frontend.h"
#include "ui/form/form_editor.h"
#include "ui/kit/ui_runtime.h"

namespace korvant {
namespace {

void tell(const std::string& line) {
    std::fprintf(stderr, "korvantide: %s\n", line.c_str());
}

/// Questions are asked on the host's terminal where it has one.
TerminalFrontend::Options streamOptions(Console& console) {
    TerminalFrontend::Options options;
    if (isTerminal(STDIN_FILENO) && isTerminal(STDOUT_FILENO)) options.terminal = &console;
    options.shouldStop = runShouldStop;
    options.notice = tell;
    return options;
}

/// Never destroyed, so that nothing of it runs at the host's exit.
struct WindowServices {
    StreamInput input{STDIN_FILENO};
    GatheredOutput output{STDOUT_FILENO};
    PipeConsole streams{input, output, runShouldStop};
    TerminalFrontend questions{streamOptions(streams)};
    WindowConsole console = makeWindowConsole(streams, runShouldStop);
    ui::WxFrontend frontend{questions};
};

void switchUi(bool enter) {
    if (enter) useOwnLooks(true);
    ui::switchUi(enter);
    if (!enter) useOwnLooks(false);
}

WindowServices* makeServices() {
    auto* const services = new WindowServices;
    ui::setApplicationFactory([]() -> wxApp* { return new CKorvantIDEApp; });
    ui::installFormEditor();
    return services;
}

WindowServices& allServices() {
    static WindowServices* const services = makeServices();
    return *services;
}

/// Until an engine is configured: a host may ask with objects of its own before, or without one.
/// Nothing is made before the first question.
Frontend& frontendNow() {
    moduleSession().setServices(windowServices());
    return moduleSession().coveredFrontend();
}

class FirstQuestion : public Frontend {
  public:
    int messageBox(const MessageBoxRequest& request) override {
        return frontendNow().messageBox(request);
    }
    std::int32_t promptInt(const std::string& label, std::int32_t initial) override {
        return frontendNow().promptInt(label, initial);
    }
    float promptFloat(const std::string& label, float initial) override {
        return frontendNow().promptFloat(label, initial);
    }
    double promptDouble(const std::string& label, double initial) override {
        return frontendNow().promptDouble(label, initial);
    }
    std::string promptString(const std::string& label, const std::string& initial) override {
        return frontendNow().promptString(label, initial);
    }
    std::unique_ptr<ProgressWindow> makeProgressWindow() override {
        return frontendNow().makeProgressWindow();
    }
};

class FirstForm : public ObjectEditor {
  public:
    bool run(EditSession& session) override {
        frontendNow();
        return objectEditor().run(session);
    }
};

/// Never destroyed, as the windows, which take its place later.
template <class Service>
Service* made() {
    alignas(Service) static std::byte place[sizeof(Service)];
    return new (place) Service;
}

const bool ready = [] {
    setObjectEditor(made<FirstForm>());
    moduleSession().setServices({nullptr, made<FirstQuestion>(), nullptr, switchUi});
    return true;
}();

}  // namespace

SessionServices windowServices() {
    WindowServices& services = allServices();
    return {services.console.console.get(), &services.frontend, nullptr, switchUi};
}

void feedWindowInput(const std::string& line) {
    WindowServices& services = allServices();
    services.console.feed(line);
    services.input.feed(line);
}

}  // namespace korvant
