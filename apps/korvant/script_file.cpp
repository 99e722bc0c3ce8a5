#include "script_file.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <vector>

#include "base/system/os_file.h"

namespace korvant_app {

namespace {

struct Close {
    void operator()(std::FILE* file) const {
        if (file != stdin) std::fclose(file);
    }
};

constexpr char kStandardInput[] = "-";

bool unreadable(const std::string& name, std::string& error) {
    error = "cannot read " + name + ": " + korvant::systemErrorText(errno);
    return false;
}

}  // namespace

bool readScriptText(const std::string& name, std::size_t limit, std::string& text,
                    std::string& error) {
    const std::unique_ptr<std::FILE, Close> file(
        name == kStandardInput ? stdin : std::fopen(name.c_str(), "rb"));
    if (!file) return unreadable(name, error);
    text.clear();
    std::vector<char> piece(65536);
    for (std::size_t got;
         text.size() <= limit && (got = std::fread(piece.data(), 1, piece.size(), file.get())) > 0;)
        text.append(piece.data(), got);
    return std::ferror(file.get()) ? unreadable(name, error) : true;
}

std::optional<Source> readScript(const std::string& name, std::size_t limit) {
    Source source{name, {}};
    std::string error;
    if (readScriptText(name, limit, source.text, error)) return source;
    complain(error);
    return std::nullopt;
}

}  // namespace korvant_app
