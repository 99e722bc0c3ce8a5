// No text ends, freezes or breaks its host. Some hundred of each kind in every test run;
// KORVANT_STORM=20000 KORVANT_STORM_SEEDS=5 in the environment for as many of each and five seeds,
// and all systematic ones.
#include "support/script_storm.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "support/needs_engine.h"
#include "support/script_generators.h"
#include "support/tree.h"

namespace korvant::test {
namespace {

using Generator = std::string (*)(Choices&);

/// Script `index` of a seed, always the same.
std::string made(Generator generator, std::uint64_t seed, std::size_t index) {
    SeededChoices choices(seed << 32 | index);
    for (int i = 0; i < 4; ++i) choices.below(2);
    return generator(choices);
}

void expectSurvives(const StormResult& result) {
    std::cout << result.text().substr(0, result.text().find('\n')) << "\n";
    EXPECT_TRUE(result.findings.empty()) << result.text();
}

void stormOf(Generator generator, const StormOptions& options = {}) {
    for (const std::uint64_t seed : stormSeeds())
        expectSurvives(storm(
            stormCount(300), [&](std::size_t i) { return made(generator, seed, i); }, options));
}

TEST(ScriptStorm, FaultyExpressionsEndNothing) {
    KORVANT_NEEDS_HARDENED_ENGINE();
    stormOf(faultyExpressions);
}

TEST(ScriptStorm, ProgramsWithOneTokenBrokenEndNothing) {
    KORVANT_NEEDS_HARDENED_ENGINE();
    stormOf(brokenProgram);
}

/// Some of these must do all that they say, or the storm would show nothing.
TEST(ScriptStorm, ArraysTextsAndObjectsAtTheirEdgesEndNothing) {
    for (const std::uint64_t seed : stormSeeds()) {
        const StormResult result =
            storm(stormCount(300), [&](std::size_t i) { return made(edgeProgram, seed, i); }, {});
        expectSurvives(result);
        EXPECT_GT(result.finished * 10, result.scripts);
    }
}

TEST(ScriptStorm, EveryTypeInEveryWayInEveryUseEndsNothing) {
    KORVANT_NEEDS_HARDENED_ENGINE();
    const std::size_t all = systematicScripts();
    const std::size_t tried = std::min(all, stormCount(400) == 400 ? 400 : all);
    // Not a divisor of the number of types or uses.
    const std::size_t stride = all / tried > 1 ? all / tried | 1 : 1;
    expectSurvives(storm(tried, [&](std::size_t i) { return systematicScript(i * stride % all); }));
}

std::vector<std::string> realScripts() {
    namespace fs = std::filesystem;
    std::vector<std::string> all;
    for (const char* folder : {"examples", "tests/scripts"})
        for (const auto& entry :
             fs::directory_iterator(fs::path(korvant::test::sourceFolder()) / folder)) {
            if (entry.path().extension() != ".as") continue;
            std::ostringstream text;
            text << std::ifstream(entry.path(), std::ios::binary).rdbuf();
            all.push_back(text.str());
        }
    std::sort(all.begin(), all.end());
    return all;
}

TEST(ScriptStorm, RealScriptsEditedTokenByTokenEndNothing) {
    KORVANT_NEEDS_HARDENED_ENGINE();
    const std::vector<std::string> scripts = realScripts();
    ASSERT_GT(scripts.size(), 10U);
    StormOptions options;
    options.run = false;  // they show dialogs and wait; what they do is tested elsewhere
    for (const std::uint64_t seed : stormSeeds())
        expectSurvives(storm(
            stormCount(300),
            [&](std::size_t i) {
                SeededChoices choices(seed << 32 | i);
                for (int k = 0; k < 4; ++k) choices.below(2);
                return editedScript(scripts[i % scripts.size()], choices);
            },
            options));
}

}  // namespace
}  // namespace korvant::test
