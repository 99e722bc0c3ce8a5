// The compile worker: the compiler's words, and that it comes back and goes away.
#include "language/compile_worker.h"

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <filesystem>
#include <mutex>

#include "host/engine/engine_build.h"
#include "language/api_description.h"
#include "language/assist_question.h"
#include "language/checker.h"
#include "language/safe_compiler.h"
#include "language/scope_index.h"
#include "support/script_files.h"
#include "support/script_fixture.h"
#include "support/typing_states.h"

namespace korvant::test {
namespace {

using Clock = std::chrono::steady_clock;

bool exists(std::int64_t process) {
    return ::kill(static_cast<pid_t>(process), 0) == 0;
}

bool goesAway(std::int64_t process) {
    for (int i = 0; i < 300 && exists(process); ++i) ::usleep(10'000);
    return !exists(process);
}

class Working : public ScriptFixture {
  protected:
    std::string words(const BuildMessages& messages) const {
        std::string all;
        for (const BuildMessage& message : messages.all()) all += message.text;
        return all;
    }
};

TEST_F(Working, SaysWhatCompileScriptSays) {
    CompileWorker worker(workerSetup(*engine()));
    for (const ScriptFile& file : allScriptFiles()) {
        session().compile(engine(), file.text);
        // What only running tells.
        if (messages().find("aborted before") != std::string::npos ||
            messages().find("Failed to initialize") != std::string::npos)
            continue;
        const auto outcome = worker.build(file.text);
        ASSERT_EQ(outcome.end, CompileWorker::End::answered) << worker.problem();
        EXPECT_EQ(words(outcome.messages), messages()) << file.name;
    }
    EXPECT_EQ(worker.hardened(), engineIsHardened());
}

TEST_F(Working, ComesBackAHundredTimesAndLeavesNothing) {
    CompileWorker worker(workerSetup(*engine()));
    const std::string text = "int main() { return 0; }";
    ASSERT_EQ(worker.build(text).build, BuildEnd::built);
    std::vector<double> ms;
    for (int i = 0; i < 100; ++i) {
        const std::int64_t child = worker.childId();
        ::kill(static_cast<pid_t>(child), SIGKILL);
        const auto began = Clock::now();
        ASSERT_EQ(worker.buildTwice(text).build, BuildEnd::built);
        ms.push_back(std::chrono::duration<double, std::milli>(Clock::now() - began).count());
        ASSERT_TRUE(goesAway(child)) << "a dead process that nobody has taken leave of stays";
    }
    std::sort(ms.begin(), ms.end());
    RecordProperty("median_ms", std::to_string(ms[50]));
    EXPECT_LT(ms[50], 500.0);
}

TEST_F(Working, DiesWithItsHostByAnyDeath) {
    const CompileWorker::Setup setup = workerSetup(*engine());
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t host = ::fork();
    if (host == 0) {
        CompileWorker worker(setup);
        worker.build("int main() { return 0; }");
        const std::int64_t child = worker.childId();
        [[maybe_unused]] const ssize_t told = ::write(ends[1], &child, sizeof child);
        // In the middle of a long build, too.
        std::string longText = "int main() { int a = 0;\n";
        for (int i = 0; i < 60'000; ++i) longText += "a = a + 1 * 2;\n";
        for (;;) worker.build(longText + "}");
    }
    std::int64_t child = -1;
    ASSERT_EQ(::read(ends[0], &child, sizeof child), static_cast<ssize_t>(sizeof child));
    ASSERT_TRUE(exists(child));
    ::usleep(30'000);
    ::kill(host, SIGKILL);
    ::waitpid(host, nullptr, 0);
    EXPECT_TRUE(goesAway(child));
    ::close(ends[0]);
    ::close(ends[1]);
}

/// Runs what the service posts, as a window's thread does.
class Window {
  public:
    CheckService::Poster poster() {
        return [this](std::function<void()> work) {
            const std::lock_guard lock(mutex_);
            posted_.push_back(std::move(work));
            wake_.notify_one();
        };
    }
    template <class Done>
    bool runUntil(Done done) {
        const auto end = Clock::now() + std::chrono::seconds(60);
        while (!done()) {
            std::unique_lock lock(mutex_);
            if (!wake_.wait_until(lock, end, [this] { return !posted_.empty(); })) return false;
            auto work = std::move(posted_.front());
            posted_.pop_front();
            lock.unlock();
            work();
        }
        return true;
    }

  private:
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> posted_;
};

TEST_F(Working, OfManyTextsTheNewestIsAnswered) {
    Window window;
    CheckResult last;
    int results = 0;
    auto service = makeCheckService(*engine(), window.poster());
    service->onResult([&](const CheckResult& result) {
        last = result;
        ++results;
    });
    for (std::uint64_t i = 1; i <= 200; ++i)
        service->check(i, "int main() { return unknown" + std::to_string(i) + "; }");
    ASSERT_TRUE(window.runUntil([&] { return last.version == 200; }));
    ASSERT_FALSE(last.diagnostics.empty());
    EXPECT_EQ(last.diagnostics[0].text, "No matching symbol 'unknown200'");
    EXPECT_LT(results, 100);
    service->check(201, "int main() { }");
    service.reset();  // what is on its way finds nobody
}

TEST_F(Working, WithoutAChildItSaysWhy) {
    CompileWorker::Setup setup = workerSetup(*engine());
    setup.program = "/nowhere/korvant-worker";
    CompileWorker worker(setup);
    EXPECT_EQ(worker.build("int main() {}").end, CompileWorker::End::impossible);
    EXPECT_NE(worker.problem(), "");
    EXPECT_FALSE(worker.canIdle());
}

TEST_F(Working, ATextThatTakesTooLongEndsTheChildOnly) {
    CompileWorker::Setup setup = workerSetup(*engine());
    setup.buildMs = 50;
    CompileWorker worker(setup);
    std::string text = "int main() { int a = 0;\n";
    for (int i = 0; i < 100'000; ++i) text += "a=a+1;\n";
    EXPECT_EQ(worker.build(text + "}").end, CompileWorker::End::tooLong);
}

TEST(FatalPlace, IsTheStatementThatKills) {
    const std::string text =
        "int g = 1;\nvoid a() { int x = 1; x++; }\nclass C {\n  void m() {\n    int y;\n"
        "    KILL(y);\n    y++;\n  }\n}\nint main() { return 0; }\n";
    int asked = 0;
    const auto contains = [&](std::string_view what) {
        return [what, &asked](const std::string& part) {
            ++asked;
            return part.find(what) != std::string::npos;
        };
    };
    EXPECT_EQ(fatalPlace(text, contains("KILL")), text.find("KILL"));
    EXPECT_EQ(fatalPlace(text, contains("class C")), text.find("class C"));
    EXPECT_LT(asked, 40);
    EXPECT_EQ(fatalPlace("", contains("")), 0u);
}

/// The distribution's engine in place of ours, where the machine has it.
TEST_F(Working, ATextThatKillsTheHostsEngineIsAnErrorWithAPlace) {
    CompileWorker::Setup setup = workerSetup(*engine());
    for (const auto& folder : {"/usr/lib/x86_64-linux-gnu", "/usr/lib/aarch64-linux-gnu"})
        if (std::filesystem::exists(std::string(folder) + "/libangelscript.so.2.35.1"))
            setup.libraryFolder = folder;
    if (setup.libraryFolder.empty()) GTEST_SKIP() << "no other engine here";
    SafeCompiler compiler(setup);
    const auto good = compiler.build("int main() { return 0; }");
    EXPECT_TRUE(good.known && good.builds && !good.died);
    EXPECT_FALSE(compiler.worker().hardened());
    int killed = 0;
    for (const char* text : {"int main() {\n  int[] a; a = {1};\n  null++;\n}",
                             "enum E { e }\nint main() {\n  E x = {1};\n}",
                             "funcdef void F();\nint main() {\n  F@ f = {1, 2};\n}",
                             "int main() {\n  -null;\n}", "int main() {\n  auto x = null.y;\n}",
                             "void f(const string &+ y) {}\nint main() { return 0; }",
                             "int main() {\n  (null)++;\n  null = 1;\n}",
                             "int main() {\n  int x = 0; x = {1, 2};\n}"}) {
        const auto outcome = compiler.build(text);
        ASSERT_TRUE(outcome.known) << text;
        if (!outcome.died) continue;
        ++killed;
        ASSERT_NE(outcome.messages.count(), 0u) << text;
        bool placed = false;
        for (const BuildMessage& message : outcome.messages.all()) placed |= message.row > 0;
        EXPECT_TRUE(placed) << text;
    }
    EXPECT_GT(killed, 0);
    RecordProperty("killed", killed);
}

/// KORVANT_TYPING_STATES of them, or a few.
TEST_F(Working, NoStateOfTypingEndsTheHost) {
    const char* const wanted = std::getenv("KORVANT_TYPING_STATES");
    const long count = wanted != nullptr ? std::strtol(wanted, nullptr, 10) : 600;
    std::vector<std::string> scripts;
    for (const ScriptFile& file : allScriptFiles()) scripts.push_back(file.text);
    TypingStates states(scripts, 17);
    CompileWorker worker(workerSetup(*engine()));
    CompileWorker::Setup questions = workerSetup(*engine());
    questions.libraryFolder.clear();
    CompileWorker helper(questions);
    for (long i = 0; i < count; ++i) {
        const std::string text = states.next();
        const ScopeIndex index(text);
        for (const NameUse& use : index.uses()) (void)index.meaningsOf(use);
        const auto outcome = worker.build(text);
        // Other engines may take the worker along; the next text finds another one.
        const bool died = !engineIsHardened() && outcome.end == CompileWorker::End::died;
        ASSERT_TRUE(died || outcome.end == CompileWorker::End::answered) << i << "\n" << text;
        (void)diagnosticsOf(outcome.messages, text);
        AssistQuestion question;
        question.kind = static_cast<AssistQuestion::Kind>(i % AssistQuestion::kKinds);
        question.offset = static_cast<std::uint64_t>(i) * 7919 % (text.size() + 1);
        question.end = question.offset + 200;
        question.name = "fresh";
        const bool answered = helper.ask(questionBytes(text, question)).has_value();
        ASSERT_TRUE(answered || !engineIsHardened()) << i << "\n" << text;
    }
}

}  // namespace
}  // namespace korvant::test
