#include "editor/document/file_memory.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <map>
#include <string_view>

#include "base/system/file_io.h"

namespace korvant {

namespace {

constexpr std::size_t kLargestList = 8 << 20;
constexpr std::int32_t kFarthest = 2000;  // lines

// One line for each thing: its word, and behind tabs what belongs to it. The first line of a file
// names it.
constexpr char kFile[] = "file", kCaret[] = "caret", kFold[] = "fold", kWatch[] = "watch",
               kBreakpoint[] = "breakpoint";

std::string escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) switch (c) {
            case '\\':
                escaped += "\\\\";
                break;
            case '\t':
                escaped += "\\t";
                break;
            case '\n':
                escaped += "\\n";
                break;
            case '\r':
                escaped += "\\r";
                break;
            default:
                escaped += c;
        }
    return escaped;
}

std::string plain(std::string_view escaped) {
    std::string text;
    for (std::size_t i = 0; i < escaped.size(); ++i) {
        if (escaped[i] != '\\' || i + 1 == escaped.size()) {
            text += escaped[i];
            continue;
        }
        const char c = escaped[++i];
        text += c == 't' ? '\t' : c == 'n' ? '\n' : c == 'r' ? '\r' : c;
    }
    return text;
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        parts.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

std::int32_t number(const std::vector<std::string>& fields, std::size_t index) {
    std::int32_t value = 0;
    if (index < fields.size())
        std::from_chars(fields[index].data(), fields[index].data() + fields[index].size(), value);
    return value;
}

std::string text(const std::vector<std::string>& fields, std::size_t index) {
    return index < fields.size() ? plain(fields[index]) : std::string();
}

std::string record(std::initializer_list<std::string> fields) {
    std::string line;
    for (const std::string& field : fields) {
        if (!line.empty()) line += '\t';
        line += field;
    }
    return line + "\n";
}

std::string written(const std::string& path, const RememberedFile& file) {
    std::string all = record({kFile, escaped(path)});
    all += record({kCaret, std::to_string(file.caretLine), std::to_string(file.caretByte),
                   std::to_string(file.firstLine)});
    for (const std::int32_t line : file.folds) all += record({kFold, std::to_string(line)});
    for (const std::string& watch : file.watches) all += record({kWatch, escaped(watch)});
    for (const RememberedBreakpoint& one : file.breakpoints)
        all += record({kBreakpoint, std::to_string(one.line), one.enabled ? "1" : "0",
                       std::to_string(one.passes), escaped(one.text), escaped(one.condition),
                       escaped(one.prints), escaped(one.classicCondition)});
    return all;
}

void readRecord(const std::vector<std::string>& fields, RememberedFile& file) {
    const std::string& what = fields.front();
    if (what == kCaret) {
        file.caretLine = std::max(number(fields, 1), 1);
        file.caretByte = std::max(number(fields, 2), 0);
        file.firstLine = std::max(number(fields, 3), 1);
    } else if (what == kFold) {
        file.folds.push_back(number(fields, 1));
    } else if (what == kWatch) {
        file.watches.push_back(text(fields, 1));
    } else if (what == kBreakpoint && number(fields, 1) > 0) {
        file.breakpoints.push_back({number(fields, 1), text(fields, 4), number(fields, 2) != 0,
                                    std::max(number(fields, 3), 0), text(fields, 5),
                                    text(fields, 6), text(fields, 7)});
    }
}

/// The part of each file in the list, newest first.
std::vector<std::pair<std::string, std::string>> partsOf(const std::string& list) {
    std::vector<std::pair<std::string, std::string>> parts;
    for (const std::string& line : split(list, '\n')) {
        if (line.empty()) continue;
        const std::vector<std::string> fields = split(line, '\t');
        if (fields.front() == kFile) parts.emplace_back(text(fields, 1), std::string());
        if (!parts.empty()) parts.back().second += line + "\n";
    }
    return parts;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

}  // namespace

FileMemory::FileMemory(FileOperations& files, std::string listFile)
    : files_(files), listFile_(std::move(listFile)) {}

RememberedFile FileMemory::recall(const std::string& path) const {
    RememberedFile file;
    std::string list;
    if (listFile_.empty() || readFile(files_, listFile_, kLargestList, list) != 0) return file;
    for (const auto& [name, part] : partsOf(list)) {
        if (name != path) continue;
        for (const std::string& line : split(part, '\n'))
            if (!line.empty()) readRecord(split(line, '\t'), file);
        break;
    }
    return file;
}

void FileMemory::remember(const std::string& path, const RememberedFile& file) {
    if (listFile_.empty() || path.empty() || files_.makeFolder(folderOf(listFile_)) != 0) return;
    // Another editor may have added to the list meanwhile.
    std::string list;
    if (readFile(files_, listFile_, kLargestList, list) != 0) list.clear();
    std::string all = written(path, file);
    std::size_t count = 1;
    for (const auto& [name, part] : partsOf(list)) {
        if (name == path) continue;
        if (++count > kMost || all.size() + part.size() > kLargestList) break;
        all += part;
    }
    replaceSecretFile(files_, listFile_, all);
}

void findAgain(std::vector<RememberedBreakpoint>& breakpoints,
               const std::vector<std::string>& lines) {
    const auto count = static_cast<std::int32_t>(lines.size());
    const auto isAt = [&](const RememberedBreakpoint& one, std::int32_t line) {
        return line >= 1 && line <= count &&
               trimmed(lines[static_cast<std::size_t>(line - 1)]) == trimmed(one.text);
    };
    std::map<std::int32_t, bool> taken;
    for (RememberedBreakpoint& one : breakpoints) {
        const std::int32_t wanted = one.line;
        for (std::int32_t away = 0; away <= kFarthest; ++away) {
            const bool below = isAt(one, wanted + away) && !taken.contains(wanted + away);
            const bool above = isAt(one, wanted - away) && !taken.contains(wanted - away);
            if (!below && !above) continue;
            one.line = below ? wanted + away : wanted - away;
            break;
        }
        taken[one.line] = true;
    }
    std::erase_if(breakpoints,
                  [count](const RememberedBreakpoint& one) { return one.line > count; });
}

}  // namespace korvant
