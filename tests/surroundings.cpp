// What surrounds every test of a suite: a current folder of its own, and what the person who starts
// the suite may choose: KORVANT_TEST_LOCALE, the locale that a host has set for its process.
#include <gtest/gtest.h>
#ifndef _WIN32
#include <sys/resource.h>
#endif

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

const bool chosen = [] {
    const char* const name = std::getenv("KORVANT_TEST_LOCALE");
    if (!name) return false;
    if (!std::setlocale(LC_ALL, name)) {
        std::fprintf(stderr, "no locale %s\n", name);
        std::_Exit(2);
    }
    return true;
}();

#ifndef _WIN32
/// Programs that are ended by a signal on purpose leave no image of their memory.
const bool imageless = [] {
    struct rlimit most {};
    if (getrlimit(RLIMIT_CORE, &most) != 0) return false;
    most.rlim_cur = 0;
    return setrlimit(RLIMIT_CORE, &most) == 0;
}();
#endif

/// Whoever starts a suite from a folder of his own finds it as it was: what a test writes without
/// saying where is found here, and the test fails.
class OwnCurrentFolder : public ::testing::EmptyTestEventListener {
    void OnTestStart(const ::testing::TestInfo&) override {
        if (!folder_) folder_.emplace();
        fs::current_path(folder_->path());
    }
    void OnTestEnd(const ::testing::TestInfo&) override {
        fs::current_path(before_);
        for (const auto& entry : fs::directory_iterator(folder_->path()))
            ADD_FAILURE() << "left in the current folder: " << entry.path().filename();
        if (!fs::is_empty(folder_->path())) folder_.reset();
    }
    void OnTestProgramEnd(const ::testing::UnitTest&) override { folder_.reset(); }

    const fs::path before_ = fs::current_path();
    std::optional<korvant::test::TemporaryFolder> folder_;
};

const bool listening = [] {
    ::testing::UnitTest::GetInstance()->listeners().Append(new OwnCurrentFolder);
    return true;
}();

}  // namespace
