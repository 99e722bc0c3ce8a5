#include "hosts/host_common.h"

#include <dlfcn.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <vector>

#include "support/ui_x_keys.h"

namespace host {
namespace {

constexpr char kScript[] = R"(
int main() {
    Print("half is " + 0.5 + "\n");
    Progress("Survey", "one of two");
    if (!Question("Carry on?")) return 1;
    int depth = Prompt("Depth", 12);
    Object o;
    if (o.messageBox("Depth", "Keep it?", "BU_OK_CANCEL", "IC_WARNING") != 202) depth = 0;
    Progress("Survey", "two of two");
    int[] wrong;
    if (depth != 12) wrong[0] = 1;
    return 0;
}
)";

}  // namespace

void fail(const std::string& what) {
    std::fprintf(stderr, "host: %s\n", what.c_str());
    std::_Exit(1);
}

void check(bool condition, const std::string& what) {
    if (!condition) fail(what);
}

User::User(std::initializer_list<std::pair<std::string, std::string>> keys)
    : thread_([this, steps = std::vector<std::pair<std::string, std::string>>(keys)] {
          for (const auto& [title, key] : steps)
              if (!korvant::test::answerWindow(title, key)) return;
          pressed_ = true;
      }) {}

User::~User() {
    thread_.join();
    check(pressed_, "a window did not come");
}

Module::Module(const char* path)
    : library_(dlopen(path, RTLD_NOW | RTLD_LOCAL)), engine_(asCreateScriptEngine()) {
    if (!library_) fail(dlerror());
    context_ =
        reinterpret_cast<decltype(&ConfigureScriptEngine)>(find("ConfigureScriptEngine"))(engine_);
    check(context_ != nullptr, "the engine was not configured");
}

Module::~Module() {
    reinterpret_cast<decltype(&ReleaseScriptEngine)>(find("ReleaseScriptEngine"))(engine_);
    context_->Release();
    engine_->ShutDownAndRelease();
    dlclose(library_);
}

void* Module::find(const char* name) {
    void* found = dlsym(library_, name);
    check(found != nullptr, std::string("the module has no ") + name);
    return found;
}

void Module::run(const std::string& script) {
    const auto runApplication = reinterpret_cast<decltype(&RunApplication)>(find("RunApplication"));
    check(runApplication(engine_, context_, script, nullptr), "the script did not end well");
}

void runTwice(Module& module) {
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    for (int i = 0; i < 2; ++i) {
        const User user{{"KorvantIDE", "y"}, {"KorvantIDE", "Return"}, {"Depth", "Escape"}};
        module.run(kScript);
    }
    check(locale == std::setlocale(LC_ALL, nullptr), "the locale was changed");
}

void speakFrench() {
    if (!std::getenv("LOCPATH")) return;
    check(std::setlocale(LC_ALL, "fr_FR.UTF-8") != nullptr, "no French locale");
    check(*std::localeconv()->decimal_point == ',', "the locale is not French");
}

}  // namespace host
