#include "support/ui_recent.h"

#include <wx/event.h>
#include <wx/window.h>

#include <cstring>
#include <map>
#include <typeinfo>

namespace korvant::test {
namespace {

constexpr std::size_t kKept = 60;

std::string nameOf(const wxObject* object) {
    const auto* window = dynamic_cast<const wxWindow*>(object);
    if (!window) return "nothing";
    const char* const type = typeid(*window).name();
    return type + std::strspn(type, "0123456789");
}

std::string told(const wxEvent& event) {
    static const std::map<wxEventType, const char*> names = {{wxEVT_CHAR_HOOK, "hook "},
                                                             {wxEVT_KEY_DOWN, "key "},
                                                             {wxEVT_KEY_UP, "key up "},
                                                             {wxEVT_SET_FOCUS, "keyboard to "},
                                                             {wxEVT_KILL_FOCUS, "keyboard from "},
                                                             {wxEVT_ACTIVATE, "active "},
                                                             {wxEVT_LEFT_DOWN, "click in "},
                                                             {wxEVT_SHOW, "shown or hidden "}};
    const auto name = names.find(event.GetEventType());
    if (name == names.end()) return {};
    std::string text = name->second;
    if (const auto* key = dynamic_cast<const wxKeyEvent*>(&event))
        text += std::to_string(key->GetKeyCode()) + " with " + std::to_string(key->GetModifiers()) +
                " in ";
    if (const auto* activate = dynamic_cast<const wxActivateEvent*>(&event))
        text += activate->GetActive() ? "yes " : "no ";
    if (const auto* show = dynamic_cast<const wxShowEvent*>(&event))
        text += show->IsShown() ? "shown " : "hidden ";
    return text + nameOf(event.GetEventObject());
}

}  // namespace

RecentEvents::RecentEvents() {
    wxEvtHandler::AddFilter(this);
}

RecentEvents::~RecentEvents() {
    wxEvtHandler::RemoveFilter(this);
}

void RecentEvents::add(const std::string& what) {
    entries_.push_back({std::chrono::steady_clock::now(), what});
    if (entries_.size() > kKept) entries_.pop_front();
}

int RecentEvents::FilterEvent(wxEvent& event) {
    if (const std::string what = told(event); !what.empty()) add(what);
    return Event_Skip;
}

std::string RecentEvents::text() const {
    std::string all;
    for (const Entry& entry : entries_)
        all += std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(
                                  entry.when - entries_.front().when)
                                  .count()) +
               " " + entry.what + "\n";
    return all;
}

}  // namespace korvant::test
