// What tests ask of the system they run on, in its own way.
#pragma once

#include <filesystem>
#include <string>

namespace korvant::test {

/// A variable of this process's environment for the time of a test; those it starts get it too.
class Variable {
  public:
    Variable(const std::string& name, const std::string& value);
    ~Variable();
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    std::string name_, before_;
    bool existed_;
};

/// The variable that says where this user's data is kept.
const char* userDataVariable();
/// The variable that says where temporary files are made.
const char* temporaryVariable();

/// Stands in for the desktop's program for pages: what is opened meanwhile is noted in `folder`.
class PageProgram {
  public:
    explicit PageProgram(const std::filesystem::path& folder);
    ~PageProgram();
    PageProgram(const PageProgram&) = delete;
    PageProgram& operator=(const PageProgram&) = delete;

    /// The path of the page that was opened, with a place in it its address; empty before that.
    std::string opened() const;

  private:
    struct State;
    std::filesystem::path folder_;
    State* state_;
};

/// Another process of this program that runs the one test `name`, disabled or not.
class OtherProcess {
  public:
    explicit OtherProcess(const std::string& name);
    ~OtherProcess() { kill(); }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    /// Ends it at once, wherever it is.
    void kill();
    /// Tells it to go and waits until it has: as a desktop does that ends the session, or where it
    /// was started on a terminal, as that does when it is closed.
    void tellToGo(bool terminalCloses);

  private:
    std::intptr_t process_ = 0;
};

}  // namespace korvant::test
