#include "script_file.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <vector>

#include "base/system/os_file.h"

namespace korvant_app {

namespace {

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::optional<Source> unreadable(const std::string& name) {
    complain("cannot read " + name + ": " + korvant::systemErrorText(errno));
    return std::nullopt;
}

}  // namespace

std::optional<Source> readScript(const std::string& name, std::size_t limit) {
    const std::unique_ptr<std::FILE, Close> file(std::fopen(name.c_str(), "rb"));
    if (!file) return unreadable(name);
    Source source{name, {}};
    std::vector<char> piece(65536);
    for (std::size_t got; source.text.size() <= limit &&
                          (got = std::fread(piece.data(), 1, piece.size(), file.get())) > 0;)
        source.text.append(piece.data(), got);
    if (std::ferror(file.get())) return unreadable(name);
    return source;
}

}  // namespace korvant_app
