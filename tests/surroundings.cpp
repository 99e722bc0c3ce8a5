// What the person who starts a suite may choose: KORVANT_TEST_LOCALE, the locale that a host has
// set for its process.
#include <clocale>
#include <cstdio>
#include <cstdlib>

namespace {

const bool chosen = [] {
    const char* const name = std::getenv("KORVANT_TEST_LOCALE");
    if (!name) return false;
    if (!std::setlocale(LC_ALL, name)) {
        std::fprintf(stderr, "no locale %s\n", name);
        std::_Exit(2);
    }
    return true;
}();

}  // namespace
