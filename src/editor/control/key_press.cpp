#include "editor/control/key_press.h"

#include <charconv>

namespace korvant {

namespace {

struct KeyName {
    std::string_view name;
    int code;
};
constexpr KeyName kKeyNames[] = {{"Space", ' '},
                                 {"Enter", KeyPress::kEnter},
                                 {"Tab", KeyPress::kTab},
                                 {"Up", KeyPress::kUp},
                                 {"Down", KeyPress::kDown},
                                 {"Esc", KeyPress::kEscape},
                                 {"Left", KeyPress::kLeft},
                                 {"Right", KeyPress::kRight}};

bool take(std::string_view& name, std::string_view prefix) {
    if (name.size() <= prefix.size() || !name.starts_with(prefix)) return false;
    name.remove_prefix(prefix.size());
    return true;
}

int codeOf(std::string_view name) {
    if (name.size() == 1) return static_cast<unsigned char>(name[0]);
    for (const KeyName& known : kKeyNames)
        if (known.name == name) return known.code;
    int number = 0;
    if (name.empty() || name[0] != 'F') return 0;
    const auto read = std::from_chars(name.data() + 1, name.data() + name.size(), number);
    const bool whole = read.ec == std::errc() && read.ptr == name.data() + name.size();
    return whole && number >= 1 && number <= 24 ? functionKeyPress(number).code : 0;
}

}  // namespace

std::optional<KeyPress> parseKeyPress(std::string_view name) {
    KeyPress key;
    for (;;) {
        if (take(name, "Ctrl+"))
            key.control = true;
        else if (take(name, "Shift+"))
            key.shift = true;
        else if (take(name, "Alt+"))
            key.alt = true;
        else
            break;
    }
    key.code = codeOf(name);
    return key.code == 0 ? std::nullopt : std::optional(key);
}

}  // namespace korvant
