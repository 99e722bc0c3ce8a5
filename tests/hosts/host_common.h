// What the three small hosts share: they load the module as a host would and run one script twice
// while a thread of its own plays the user.
#pragma once

#include <angelscript.h>

#include <string>
#include <thread>

#include "korvantide/korvantide.h"

namespace host {

/// Ends the process with a message.
[[noreturn]] void fail(const std::string& what);
void check(bool condition, const std::string& what);

/// Presses a key in the window with this title once it has the keyboard, then waits for its end.
class User {
  public:
    /// `keys`: pairs of a window title and the X name of a key.
    explicit User(std::initializer_list<std::pair<std::string, std::string>> keys);
    /// Fails when a window did not come.
    ~User();

  private:
    std::thread thread_;
    bool pressed_ = false;
};

/// The module, loaded with dlopen, and an engine that it has configured.
class Module {
  public:
    /// `path`: the library.
    explicit Module(const char* path);
    /// Releases the engine; the library stays.
    ~Module();

    /// Runs `script` under debugger control; fails when it does not end well.
    void run(const std::string& script);

  private:
    void* find(const char* name);

    void* library_;
    asIScriptEngine* engine_;
    asIScriptContext* context_ = nullptr;
};

/// Runs a script with a message box, a prompt, progress and output, twice, and checks that what a
/// host relies on is left alone: the locale and the arithmetic of its numbers.
void runTwice(Module& module);

/// A French locale, if the environment has one (LOCPATH says where); numbers then have a comma.
void speakFrench();

}  // namespace host
