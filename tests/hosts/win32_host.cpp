// A host with nothing but the system's own windows: it loads the module by name, runs scripts in
// it, stops in them, has a form filled in and opens the editor, while a thread plays the user.
//
// win32_host MODULE [FOLDER]     FOLDER: where pictures of the screen are kept
#include <windows.h>

#include <angelscript.h>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "base/system/wide_text_win32.h"
#include "korvantide/host_interface.h"
#include "korvantide/korvantide.h"
#include "support/screen_win32.h"
#include "support/ui_x_keys.h"

namespace {

using korvant::test::answerWindow;
using korvant::test::awaitWindow;
using korvant::test::pressInWindow;

[[noreturn]] void fail(const std::string& what) {
    std::fprintf(stderr, "win32_host: %s\n", what.c_str());
    std::fflush(stderr);
    TerminateProcess(GetCurrentProcess(), 1);
    std::abort();
}

void check(bool condition, const std::string& what) {
    if (!condition) fail(what);
}

template <class Function>
Function* entry(HMODULE module, const char* name) {
    const FARPROC address = GetProcAddress(module, name);
    check(address != nullptr, std::string("the module has no ") + name);
    Function* function = nullptr;
    std::memcpy(&function, &address, sizeof function);
    return function;
}

HWND hostWindow = nullptr;

void openHostWindow() {
    WNDCLASSW type{};
    type.lpfnWndProc = DefWindowProcW;
    type.hInstance = GetModuleHandleW(nullptr);
    type.lpszClassName = L"Host";
    type.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    RegisterClassW(&type);
    hostWindow = CreateWindowExW(0, L"Host", L"A host of its own", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                 20, 20, 300, 120, nullptr, nullptr, type.hInstance, nullptr);
    check(hostWindow != nullptr, "no window");
}

/// The host's own loop takes a few ticks of a timer.
void goOn() {
    SetTimer(hostWindow, 1, 10, nullptr);
    int ticks = 0;
    for (MSG message; ticks < 5 && GetMessageW(&message, nullptr, 0, 0) > 0;) {
        if (message.message == WM_TIMER && message.hwnd == hostWindow) ++ticks;
        DispatchMessageW(&message);
    }
    check(ticks == 5, "the host's loop stands still");
    KillTimer(hostWindow, 1);
    check(IsWindowEnabled(hostWindow) != 0, "the host's window is left disabled");
}

std::string pictureFolder;

void keepPicture(const std::string& name, const std::string& title = {}) {
    if (pictureFolder.empty()) return;
    Sleep(500);  // for a person to look at: what is still being drawn shall be on it
    check(korvant::test::keepScreen(pictureFolder + "/" + name + ".png", title), "no picture");
}

/// Does its steps on a thread while a call of the module waits for somebody.
class User {
  public:
    explicit User(std::function<bool()> steps)
        : thread_([this, steps] {
              check(steps(), "a window did not come or did not go");
              done_ = true;
          }) {}
    /// The thread asks windows of this one for their titles, so they must go on answering.
    ~User() {
        while (!done_) {
            for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
                DispatchMessageW(&message);
            Sleep(1);
        }
        thread_.join();
    }
    User(const User&) = delete;
    User& operator=(const User&) = delete;

  private:
    std::atomic<bool> done_{false};
    std::thread thread_;
};

class Module {
  public:
    explicit Module(const char* path)
        : library_(LoadLibraryA(path)), engine_(asCreateScriptEngine()) {
        check(library_ != nullptr, "the module does not load");
        context_ =
            entry<decltype(ConfigureScriptEngine)>(library_, "ConfigureScriptEngine")(engine_);
        check(context_ != nullptr, "the engine is not configured");
    }
    ~Module() {
        entry<decltype(ReleaseScriptEngine)>(library_, "ReleaseScriptEngine")(engine_);
        context_->Release();
        engine_->ShutDownAndRelease();
    }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    bool compile(const std::string& script) {
        return entry<decltype(CompileScript)>(library_, "CompileScript")(engine_, script) != 0;
    }
    bool run(const std::string& script, const std::vector<std::int32_t>& stops = {}) {
        return entry<decltype(RunApplication)>(library_, "RunApplication")(engine_, context_,
                                                                           script, &stops);
    }
    bool goOn(const std::vector<std::int32_t>& stops, int mode) {
        return entry<decltype(ContinueApplication)>(library_, "ContinueApplication")(
            engine_, context_, &stops, mode);
    }
    std::string edit(std::string script) {
        entry<decltype(RunScriptEditor)>(library_, "RunScriptEditor")(engine_, context_, script,
                                                                      "Host");
        return script;
    }
    std::string lastMessage() {
        KorvantRunResult result{};
        result.size = sizeof result;
        entry<decltype(GetLastRunResult)>(library_, "GetLastRunResult")(&result);
        return result.message;
    }
    asIScriptContext* context() { return context_; }

  private:
    HMODULE library_;
    asIScriptEngine* engine_;
    asIScriptContext* context_ = nullptr;
};

void compileAndRun(Module& module) {
    check(module.compile("int main() { return 0; }"), "a right script does not compile");
    check(!module.compile("int main() { return }"), "a wrong script compiles");
    check(module.run("int main() { int[] a = {3, 1, 2}; a.sortAsc(); string s = \"a\" + a[0];\n"
                     "  if (s != \"a1\") a[7] = 1; return 0; }"),
          "a script does not end well: " + module.lastMessage());
}

/// With a box, a prompt and progress, which each need a window of their own.
void talk(Module& module) {
    const User user([] {
        if (!awaitWindow("KorvantIDE")) return false;
        keepPicture("box");
        return answerWindow("KorvantIDE", "y") && answerWindow("Depth", "Escape");
    });
    check(module.run("int main() {\n"
                     "  Progress(\"Survey\", \"one of two\");\n"
                     "  if (!Question(\"Carry on?\")) return 1;\n"
                     "  Object o;\n"
                     "  if (o.messageBox(\"Depth\", \"Keep it?\", \"BU_OK_CANCEL\", "
                     "\"IC_WARNING\") != 202) {\n"
                     "    int[] a; a[0] = 1; }\n"
                     "  return 0;\n}"),
          "a script with dialogs does not end well: " + module.lastMessage());
}

void print(Module& module) {
    const User user([] {
        if (!awaitWindow("Output")) return false;
        keepPicture("console");
        return answerWindow("KorvantIDE", "y");
    });
    check(module.run("int main() {\n"
                     "  Print(\"Ore grades\\n\"); double[] g = {0.2, 1.4, 3.8};\n"
                     "  for (uint i = 0; i < g.length(); i++) {\n"
                     "    if (g[i] > 1) SetTextColor(6, 0); if (g[i] > 3) SetTextColor(4, 1);\n"
                     "    Print(\"  \" + g[i] + \" %% caf\xE9 \xE2\x82\xAC\\n\"); ResetText(); }\n"
                     "  Question(\"Seen?\");\n"
                     "  return 0;\n}"),
          "a script that prints does not end well: " + module.lastMessage());
}

void stopAndStep(Module& module) {
    const std::string script =
        "int main() {\n  int a = 1;\n  a = a + 1;\n  a = a * 5;\n  return a;\n}";
    check(module.run(script, {3}), "the run does not stop");
    check(module.context()->GetState() == asEXECUTION_SUSPENDED, "the run is not suspended");
    check(module.context()->GetLineNumber(0) == 3, "the run stops elsewhere");
    check(module.goOn({3}, 1), "the step fails");
    check(module.context()->GetLineNumber(0) == 4, "the step ends elsewhere");
    check(module.goOn({}, 0), "the run does not go on");
    check(module.context()->GetState() == asEXECUTION_FINISHED, "the run does not finish");
}

void fillForm(Module& module) {
    const User user([] {
        if (!awaitWindow("Pump")) return false;
        keepPicture("form");
        check(IsWindowEnabled(hostWindow) == 0, "the host can be used beside a form");
        return pressInWindow("Pump", "Return", true) && awaitWindow("Pump", false);
    });
    check(module.run("int main() {\n"
                     "  Object o; o.setTitle(\"Pump\");\n"
                     "  o.addClass(\"Duty\", true); o.addCategory(\"Water\");\n"
                     "  o.addProperty(\"flow\", \"Flow\", 12.5, \"m3/h\", true);\n"
                     "  o.addProperty(\"head\", \"Head\", 30.0, \"m\", true);\n"
                     "  if (!o.edit()) { int[] a; a[0] = 1; }\n"
                     "  return 0;\n}"),
          "a script with a form does not end well: " + module.lastMessage());
}

void openEditor(Module& module) {
    const std::string script =
        "// Mean grade of the samples above a cut-off.\n"
        "double meanAbove(const double[] &in grades, double cutOff)\n"
        "{\n"
        "    double sum = 0;\n"
        "    int used = 0;\n"
        "    for (uint i = 0; i < grades.length(); i++)\n"
        "        if (grades[i] >= cutOff)\n"
        "        {\n"
        "            sum += grades[i];\n"
        "            used++;\n"
        "        }\n"
        "    return used == 0 ? 0.0 : sum / used;\n"
        "}\n"
        "\n"
        "int main()\n"
        "{\n"
        "    double[] grades = {0.2, 1.4, 3.8, 0.9};\n"
        "    double mean = meanAbove(grades, 0.5);\n"
        "    Print(\"Mean grade: \" + mean + \"\\n\");\n"
        "    return 0;\n"
        "}\n";
    const User user([] {
        const char* const title = "Script Editor";
        if (!awaitWindow(title)) return false;
        check(IsWindowEnabled(hostWindow) == 0, "the host can be used beside the editor");
        for (int line = 1; line < 19; ++line)
            if (!pressInWindow(title, "Down", false)) return false;
        for (const char* key : {"F9", "F5"})
            if (!pressInWindow(title, key, false)) return false;
        Sleep(1500);
        keepPicture("editor", title);
        if (!pressInWindow(title, "F5", false)) return false;
        Sleep(1500);
        PostMessageW(FindWindowW(nullptr, L"Script Editor"), WM_CLOSE, 0, 0);
        return awaitWindow(title, false);
    });
    check(module.edit(script) == script, "the editor changed the text");
}

}  // namespace

int main(int argc, char** argv) {
    check(argc >= 2, "usage: win32_host MODULE [FOLDER]");
    if (argc > 2) pictureFolder = argv[2];
    openHostWindow();
    Module module(argv[1]);
    const struct {
        const char* name;
        void (*part)(Module&);
    } parts[] = {{"compile and run", compileAndRun},
                 {"stop and step", stopAndStep},
                 {"talk", talk},
                 {"print", print},
                 {"fill a form", fillForm},
                 {"edit", openEditor}};
    for (const auto& [name, part] : parts) {
        part(module);
        goOn();
        std::printf("win32_host: %s\n", name);
        std::fflush(stdout);
    }
    return 0;
}
