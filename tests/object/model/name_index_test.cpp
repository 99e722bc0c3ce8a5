// The table from names to numbers.
#include "object/model/name_index.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace korvant::test {
namespace {

/// Names of every size up to 40 bytes that differ in one byte only, at each place of it.
std::vector<std::string> namesOfOneSize(std::size_t size) {
    std::vector<std::string> names = {std::string(size, 'a')};
    for (std::size_t place = 0; place < size; ++place)
        for (const char byte : {'b', '\0', '\xFF'}) {
            names.emplace_back(size, 'a');
            names.back()[place] = byte;
        }
    return names;
}

TEST(NameIndex, TellsNamesApartThatDifferInOneByte) {
    std::vector<std::string> names;
    for (std::size_t size = 0; size <= 40; ++size)
        for (const std::string& name : namesOfOneSize(size)) names.push_back(name);
    const auto nameOf = [&](std::uint32_t number) -> std::string_view { return names[number]; };
    NameIndex index;
    for (std::size_t i = 0; i < names.size(); ++i) {
        ASSERT_EQ(index.find(names[i], nameOf), NameIndex::kNone) << i;
        index.insert(names[i], static_cast<std::uint32_t>(i));
    }
    const NameIndex copy = index;
    index.clear();
    for (std::size_t i = 0; i < names.size(); ++i) {
        ASSERT_EQ(copy.find(names[i], nameOf), i);
        ASSERT_EQ(index.find(names[i], nameOf), NameIndex::kNone) << i;
        ASSERT_EQ(copy.find(names[i] + '*', nameOf), NameIndex::kNone) << i;
    }
    EXPECT_EQ(copy.size(), names.size());
}

/// Neighbours in a numbering must not crowd into few places.
TEST(NameIndex, KeepsNumberedNamesApart) {
    std::vector<std::string> names;
    for (int i = 0; i < 100000; ++i) names.push_back("property" + std::to_string(i));
    std::size_t compared = 0;
    const auto nameOf = [&](std::uint32_t number) -> std::string_view {
        ++compared;
        return names[number];
    };
    NameIndex index;
    for (std::size_t i = 0; i < names.size(); ++i)
        index.insert(names[i], static_cast<std::uint32_t>(i));
    for (const std::string& name : names) index.find(name, nameOf);
    EXPECT_LT(compared, names.size() + names.size() / 50);
}

TEST(NameIndex, RefusesMoreNamesThanItCanNumber) {
    NameIndex index;
    EXPECT_THROW(index.reserve(NameIndex::kMost), std::length_error);
    EXPECT_EQ(index.size(), 0U);
}

}  // namespace
}  // namespace korvant::test
