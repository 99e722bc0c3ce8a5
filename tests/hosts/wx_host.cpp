// A host that is a program of the same toolkit: a frame, and scripts that are run from its events.
#include <wx/app.h>
#include <wx/frame.h>
#include <wx/timer.h>

#include <memory>

#include "hosts/host_common.h"

namespace {

class HostFrame : public wxFrame {
  public:
    explicit HostFrame(const char* module)
        : wxFrame(nullptr, wxID_ANY, "Host"), module_(std::make_unique<host::Module>(module)) {
        Bind(wxEVT_TIMER, [this](wxTimerEvent&) { tick(); });
        CallAfter([this] {
            host::runTwice(*module_);
            timer_.Start(1);
        });
    }

  private:
    /// The host's own loop goes on, and the host ends it.
    void tick() {
        host::check(wxTheApp->GetTopWindow() == this && IsShown(), "the host's window is gone");
        if (++ticks_ == 5) {
            timer_.Stop();
            module_.reset();
            Close();
        }
    }

    std::unique_ptr<host::Module> module_;
    wxTimer timer_{this};
    int ticks_ = 0;
};

class HostApp : public wxApp {
  public:
    bool OnInit() override {
        host::check(argc == 2, "usage: wx_host MODULE");
        host::speakFrench();
        frame_ = new HostFrame(argv[1].utf8_str());
        return frame_->Show();
    }
    void OnAssertFailure(const wxChar* file, int line, const wxChar*, const wxChar* condition,
                         const wxChar*) override {
        host::fail(wxString::Format("assertion %s in %s:%d", condition, file, line).ToStdString());
    }
    bool OnExceptionInMainLoop() override { host::fail("an exception came through"); }

  private:
    HostFrame* frame_ = nullptr;
};

}  // namespace

wxIMPLEMENT_APP(HostApp);
