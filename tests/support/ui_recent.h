// What windows were told lately, for a step that waits too long.
#pragma once

#include <wx/eventfilter.h>

#include <chrono>
#include <deque>
#include <string>

namespace korvant::test {

/// Keeps the latest keys, clicks, changes of the keyboard's owner and of the active window. The
/// toolkit must run before it is made and while it lives.
class RecentEvents : public wxEventFilter {
  public:
    RecentEvents();
    ~RecentEvents() override;
    RecentEvents(const RecentEvents&) = delete;
    RecentEvents& operator=(const RecentEvents&) = delete;

    void add(const std::string& what);
    /// A line each, with the milliseconds since the first.
    std::string text() const;

  private:
    int FilterEvent(wxEvent& event) override;

    struct Entry {
        std::chrono::steady_clock::time_point when;
        std::string what;
    };
    std::deque<Entry> entries_;
};

}  // namespace korvant::test
