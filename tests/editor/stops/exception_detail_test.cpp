#include "editor/stops/exception_detail.h"

#include <gtest/gtest.h>

#include <map>

namespace korvant {
namespace {

DebugValue number(const std::string& value) {
    DebugValue made;
    made.value = value;
    made.type = "int";
    return made;
}

DebugValue arrayOf(std::uint64_t count) {
    DebugValue made;
    made.value = std::to_string(count) + " elements";
    made.type = "Interval[]";
    made.indexed = count;
    return made;
}

std::string detail(const std::string& message, const std::string& line,
                   const std::map<std::string, DebugValue>& known) {
    return exceptionDetail(message, line,
                           [&](const std::string& expression) -> std::optional<DebugValue> {
                               const auto found = known.find(expression);
                               if (found == known.end()) return std::nullopt;
                               return found->second;
                           });
}

constexpr char kBounds[] = "Index out of bounds", kNull[] = "Null pointer access",
               kZero[] = "Divide by zero";

TEST(ExceptionDetail, NamesTheArrayAndTheNumber) {
    const std::map<std::string, DebugValue> known = {
        {"best + 1", number("14")}, {"samples", arrayOf(14)}, {"hole.samples", arrayOf(1)},
        {"this.empty", arrayOf(0)}, {"grid[i]", arrayOf(3)},  {"grid", arrayOf(9)},
        {"i", number("2")},         {"-1", number("-1")}};
    EXPECT_EQ(detail(kBounds, "    return samples[best + 1].rock;", known),
              "samples has 14 elements, numbered 0 to 13; the number here was 14.");
    EXPECT_EQ(detail(kBounds, "use(samples[i], hole.samples[i]);", known),
              "hole.samples has 1 element, numbered 0; the number here was 2.");
    EXPECT_EQ(detail(kBounds, "this.empty[i] = 1;", known),
              "this.empty has no elements; the number here was 2.");
    EXPECT_EQ(detail(kBounds, "x = grid[i][-1];", known),
              "grid[i] has 3 elements, numbered 0 to 2; the number here was -1.");
    EXPECT_EQ(detail(kBounds, "x = grid[other()][i]; y = samples[i", known), "");
    EXPECT_EQ(detail(kBounds, "[", known), "");
}

TEST(ExceptionDetail, NamesTheHandleAndTheDivisor) {
    const std::map<std::string, DebugValue> known = {
        {"hole", number("null")},  {"a.b", number("null")},    {"a", number("\"x\"")},
        {"count", number("0")},    {"(x - y)", number("0.0")}, {"n.items[2]", number("-0")},
        {"total", number("10.5")}, {"10", number("10")}};
    EXPECT_EQ(detail(kNull, "return hole.samples[0];", known), "hole is null.");
    EXPECT_EQ(detail(kNull, "print(a.b.c);", known), "a.b is null.");
    EXPECT_EQ(detail(kNull, "print(other().c);", known), "");
    EXPECT_EQ(detail(kZero, "mean = total / count;", known), "count is 0.");
    EXPECT_EQ(detail(kZero, "mean = (total / 10) % (x - y) + 1;", known), "(x - y) is 0.");
    EXPECT_EQ(detail(kZero, "v /= n.items[2];", known), "n.items[2] is 0.");
    EXPECT_EQ(detail(kZero, "v /", known), "");
    EXPECT_EQ(detail("Something else", "samples[9] / 0", known), "");
}

}  // namespace
}  // namespace korvant
