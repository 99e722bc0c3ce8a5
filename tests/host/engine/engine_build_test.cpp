// Which engine is in use is told by the library that holds it.
#include "host/engine/engine_build.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "host/engine/library_mark.h"

namespace korvant::test {
namespace {

TEST(EngineBuild, IsTheOneThatTheBuildChose) {
    asIScriptEngine* engine = asCreateScriptEngine();
    ASSERT_NE(engine, nullptr);
    EXPECT_EQ(engineIsHardened(*engine), KORVANT_TEST_ENGINE_HARDENED != 0);
    EXPECT_EQ(engineIsHardened(), KORVANT_TEST_ENGINE_HARDENED != 0);
    engine->ShutDownAndRelease();
}

TEST(EngineBuild, NamesOfOtherLibrariesDoNotCount) {
    // On Windows the address of a function of another library is that of a jump in this one.
#ifndef _WIN32
    EXPECT_FALSE(
        libraryAtExports(reinterpret_cast<const void*>(&std::malloc), "korvantEngineRevision"));
#endif
    EXPECT_FALSE(libraryAtExports(nullptr, "korvantEngineRevision"));
    EXPECT_FALSE(libraryAtExports(reinterpret_cast<const void*>(&asCreateScriptEngine), "malloc"));
}

}  // namespace
}  // namespace korvant::test
