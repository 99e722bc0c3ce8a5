// Questions about a text, answered by a process beside the editor.
#include "language/assist_service.h"

#include <gmock/gmock.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

#include "language/compile_worker.h"
#include "language/safe_compiler.h"
#include "support/script_files.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

using Asked = AssistQuestion::Kind;

const char kScript[] =
    "enum Rock { granite, schist }\n"
    "// One sample.\n"
    "class Sample {\n"
    "    double grade = 0;\n"
    "    double weighed(double by) const { return grade * by; }\n"
    "}\n"
    "int main() {\n"
    "    Sample first;\n"
    "    double metal = first.weighed(2);\n"
    "    Print(\"\" + metal);\n"
    "    return 0;\n"
    "}\n";

/// The window's side: runs what the service posts.
class Asking : public ScriptFixture {
  protected:
    void SetUp() override {
        ScriptFixture::SetUp();
        service_ = makeAssistService(*engine(), [this](std::function<void()> work) {
            const std::lock_guard lock(mutex_);
            posted_.push_back(std::move(work));
            wake_.notify_one();
        });
    }
    void TearDown() override {
        service_.reset();
        ScriptFixture::TearDown();
    }
    template <class Done>
    bool runUntil(Done done) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!done()) {
            std::function<void()> work;
            {
                std::unique_lock lock(mutex_);
                if (!wake_.wait_until(lock, end, [this] { return !posted_.empty(); })) return false;
                work = std::move(posted_.front());
                posted_.pop_front();
            }
            work();
        }
        return true;
    }
    AssistAnswer ask(const std::string& text, AssistQuestion question) {
        AssistAnswer found;
        bool answered = false;
        service_->ask(std::make_shared<const std::string>(text), std::move(question),
                      [&](const AssistAnswer* answer) {
                          answered = true;
                          EXPECT_NE(answer, nullptr);
                          if (answer != nullptr) found = *answer;
                      });
        EXPECT_TRUE(runUntil([&] { return answered; }));
        return found;
    }
    AssistAnswer askAt(const std::string& before, Asked kind, const std::string& name = {}) {
        AssistQuestion question;
        question.kind = kind;
        question.offset = std::string(kScript).find(before) + before.size();
        question.name = name;
        return ask(kScript, question);
    }

    std::unique_ptr<AssistService> service_;

  private:
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> posted_;
};

std::string labels(const AssistAnswer& answer) {
    std::string all = " ";
    for (const Suggestion& one : answer.suggestions) all += one.label + " ";
    return all;
}

TEST_F(Asking, EveryKindIsAnsweredByTheCompiler) {
    const std::string members = labels(askAt("metal = first.", Asked::suggestions));
    EXPECT_EQ(members, " grade weighed ");
    const AssistAnswer names = askAt("    Pri", Asked::suggestions);
    EXPECT_NE(labels(names).find(" StrSize "), std::string::npos);
    EXPECT_NE(labels(names).find(" first "), std::string::npos);
    const auto strChr =
        std::find_if(names.suggestions.begin(), names.suggestions.end(),
                     [](const Suggestion& one) { return one.label == "StrSubstring"; });
    ASSERT_NE(strChr, names.suggestions.end());
    EXPECT_NE(strChr->documentation.find("```"), std::string::npos) << "the library's own example";

    const AssistAnswer call = askAt("first.weighed(", Asked::signatures);
    ASSERT_EQ(call.signatures.all.size(), 1u);
    EXPECT_EQ(call.signatures.all[0].label, "double Sample::weighed(double by) const");
    EXPECT_EQ(call.signatures.all[0].parameters.size(), 1u);
    const AssistAnswer help = askAt("    Samp", Asked::hover);
    ASSERT_TRUE(help.hover);
    EXPECT_EQ(help.hover->documentation, "One sample.");
    const AssistAnswer place = askAt("first.weig", Asked::definition);
    ASSERT_EQ(place.places.size(), 1u);
    EXPECT_EQ(place.places[0].begin, std::string(kScript).find("weighed"));
    EXPECT_EQ(askAt("return gra", Asked::references).places.size(), 2u);
    EXPECT_EQ(askAt("    Prin", Asked::definition).refusal.text(),
              "\"Print\" belongs to the library");
    EXPECT_EQ(askAt("double met", Asked::rename, "ore").places.size(), 2u);
    EXPECT_NE(askAt("double met", Asked::rename, "first").refusal.text(), "");
    EXPECT_NE(askAt("    Prin", Asked::renamePlace).refusal.text(), "");
    AssistQuestion colours;
    colours.kind = Asked::colours;
    colours.end = 1'000'000;
    EXPECT_GT(ask(kScript, colours).colours.size(), 10u);
}

TEST_F(Asking, RepairsMendWhatTheCompilerSays) {
    std::string broken = kScript;
    broken.replace(broken.find("metal);"), 7, "metl);");
    AssistQuestion question;
    question.kind = Asked::repairs;
    question.problem.line = 10;
    question.problem.column = 16;
    question.problem.text = "No matching symbol 'metl'";
    const AssistAnswer found = ask(broken, question);
    ASSERT_FALSE(found.repairs.empty());
    EXPECT_EQ(found.repairs[0].with, "metal");
}

/// "Nothing is known that would mend this" was said of two swapped letters in a short name.
TEST_F(Asking, SwappedLettersAreMended) {
    std::string broken = kScript;
    broken.insert(broken.find("    double metal"), "    first.garde = 1;\n");
    AssistQuestion question;
    question.kind = Asked::repairs;
    question.problem.line = 9;
    question.problem.column = 10;
    question.problem.text = "'garde' is not a member of 'Sample'";
    const AssistAnswer found = ask(broken, question);
    ASSERT_FALSE(found.repairs.empty());
    EXPECT_EQ(found.repairs[0].with, "grade");
}

/// "form" was to become "for".
TEST_F(Asking, NamesMendBeforeWordsOfTheLanguage) {
    std::string broken = kScript;
    broken.insert(broken.find("    double metal"), "    double from = 0; from = form;\n");
    AssistQuestion question;
    question.kind = Asked::repairs;
    question.problem.line = 9;
    question.problem.column = 29;
    question.problem.text = "No matching symbol 'form'";
    const AssistAnswer found = ask(broken, question);
    ASSERT_FALSE(found.repairs.empty());
    EXPECT_EQ(found.repairs[0].with, "from");
}

TEST_F(Asking, OfWaitingQuestionsOfAKindTheNewestIsAnswered) {
    const auto text = std::make_shared<const std::string>(kScript);
    int answered = 0, last = 0;
    for (int i = 1; i <= 50; ++i) {
        AssistQuestion question;
        question.kind = Asked::hover;
        question.offset = static_cast<std::uint64_t>(i);
        service_->ask(text, question, [&, i](const AssistAnswer*) {
            ++answered;
            last = i;
        });
    }
    EXPECT_TRUE(runUntil([&] { return last == 50; }));
    EXPECT_LT(answered, 5);
    std::shared_ptr<const ScopeIndex> index;
    service_->read(text, [&](std::shared_ptr<const ScopeIndex> read) { index = std::move(read); });
    EXPECT_TRUE(runUntil([&] { return index != nullptr; }));
    EXPECT_EQ(index->document().text(), kScript);
}

TEST_F(Asking, AnswersAreReadAsTheyWereWrittenAndCutOnesNot) {
    CompileWorker worker(workerSetup(*engine()));
    AssistQuestion question;
    question.offset = std::string(kScript).find("first.") + 6;
    const auto bytes = worker.ask(questionBytes(kScript, question));
    ASSERT_TRUE(bytes);
    const auto answer = readAnswer(*bytes);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answerBytes(*answer), *bytes);
    for (std::size_t size = 0; size < bytes->size(); size += 3)
        EXPECT_FALSE(readAnswer(std::string_view(*bytes).substr(0, size)));
    const std::string asked = questionBytes("", question);
    for (std::size_t size = 0; size < asked.size(); ++size)
        EXPECT_FALSE(readQuestion(std::string_view(asked).substr(0, size)));
}

/// What is half written is asked about most: at every place of every line.
TEST_F(Asking, BrokenTextsAreAnsweredEverywhere) {
    const std::string whole = kScript;
    std::uint64_t kind = 0;
    for (std::size_t cut = 7; cut < whole.size(); cut += 11) {
        const std::string text =
            whole.substr(0, cut) + whole.substr(std::min(cut + 5, whole.size()));
        AssistQuestion question;
        question.kind = static_cast<Asked>(kind++ % AssistQuestion::kKinds);
        question.offset = question.end = cut;
        question.name = "other";
        question.problem.line = 2;
        ask(text, question);
    }
}

}  // namespace
}  // namespace korvant::test
