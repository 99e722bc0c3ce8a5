// A host that calls everything in any order with anything.
#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <iterator>
#include <optional>

#include "korvantide/host_interface.h"
#include "korvantide/korvantide.h"
#include "module/configuration.h"
#include "support/choices.h"
#include "support/script_fixture.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

constexpr const char* kScripts[] = {
    "",
    "int main() { return 0; }",
    "int main() {\n int i = 0;\n i++;\n Print(\"\" + i);\n return i;\n}",
    "int main() {\n int[] a;\n return a[4];\n}",
    "int main() { SetMaxRunTime(5); while (true) {} return 0; }",
    "int main() { return x; }",
    "string[] kept; int main() { kept.insertLast(\"x\"); kept.resize(5000); return 0; }",
    "class A { ~A() { Print(\"gone\"); } } A a; int main() { Information(\"i\"); return 0; }",
    "void main() {}",
    "int f(int n) { return n == 0 ? 0 : f(n - 1); } int main() {\n return f(300);\n}",
    "int main() { Object o; o.addProperty(\"p\", \"P\", 1, \"\", true); o.edit(); return 0; }",
    "int main() { OpenOutputFile(\"/dev/full\"); Print(\"x\"); return 0; }",
    "int main() { again(); Print(Prompt(\"t\", \"x\")); return 0; }",
    "int g = 1 / g; int main() { return g; }"};

class AnyCalls : public ScriptFixture {
  protected:
    explicit AnyCalls() { self_ = this; }
    ~AnyCalls() override {
        SetScriptCallbacks(nullptr);
        SetScriptLimits(nullptr);
    }

    void start(std::uint64_t seed) {
        choices_.emplace(seed);
        depth_ = 0;
        offerAgain();
    }
    void offerAgain() {
        engine()->RegisterGlobalFunction("void again()", asFUNCTION(again), asCALL_CDECL);
    }
    void callSomething() {
        switch (choices_->below(16)) {
            case 0:
                return limits();
            case 1:
                return callbacks();
            case 2:
                RequestScriptStop();
                return;
            case 3:
                GetRunFrame(number(), record<KorvantRunFrame>());
                GetBuildMessage(number(), record<KorvantBuildMessage>());
                return;
            case 4:
                GetLastRunResult(record<KorvantRunResult>());
                GetUnwrittenFile(number());
                return;
            case 5:
                CompileScript(any(engine()), script());
                return;
            case 6:
                return prepareAndRun();
            case 7:
                return box();
            case 8:
                if (choices_->oneIn(4)) ExportScriptApi(any(engine()), path().c_str());
                return;
            case 9:
                if (asIScriptContext* const same = configureEngine(any(engine()))) same->Release();
                return;
            case 10:
                if (choices_->oneIn(5)) ReleaseScriptEngine(any(engine()));
                return;
            case 11:
            case 12:
                ContinueApplication(any(engine()), any(context()), lines(),
                                    static_cast<std::int32_t>(number()));
                return;
            default:
                RunApplication(any(engine()), any(context()), script(), lines());
        }
    }

  private:
    static void again() {
        if (self_->depth_ > 2) return;
        ++self_->depth_;
        self_->callSomething();
        --self_->depth_;
    }

    template <class List>
    auto pick(const List& of) {
        return of[choices_->below(static_cast<std::uint32_t>(std::size(of)))];
    }
    std::uint32_t number() {
        static constexpr std::uint32_t kNumbers[] = {0, 1, 2, 3, 7, 1000, 0x7FFFFFFF, 0xFFFFFFFF};
        return pick(kNumbers);
    }
    std::string script() { return pick(kScripts); }
    std::string path() { return choices_->oneIn(2) ? folder_.file("api") : "/no/such/folder/api"; }
    /// Now and then nothing.
    template <class Pointer>
    Pointer any(Pointer pointer) {
        return choices_->oneIn(12) ? nullptr : pointer;
    }
    template <class Record>
    Record* record() {
        static Record filled;
        static constexpr std::uint32_t kSizes[] = {0, 3, 4, 8, sizeof(Record), 100000};
        filled.size = pick(kSizes);
        return any(&filled);
    }
    const std::vector<std::int32_t>* lines() {
        lines_ = {static_cast<std::int32_t>(number()), 3, -1, INT_MIN};
        return choices_->oneIn(2) ? &lines_ : nullptr;
    }

    void limits() {
        KorvantLimits limits{};
        limits.size = sizeof limits;
        GetScriptLimits(&limits);
        static constexpr std::uint64_t kSmall[] = {0, 1, 300, 100000, 1 << 24};
        limits.callDepth = number();
        limits.stringBytes = pick(kSmall);
        limits.runBytes = pick(kSmall);
        limits.scriptBytes = pick(kSmall);
        limits.scriptTokens = pick(kSmall);
        limits.nameBytes = number();
        limits.hardCeilingMs = pick(kSmall);
        limits.nesting = choices_->below(300);
        limits.boxesBeforeStopButton = number();
        limits.fileAccess = static_cast<std::int32_t>(choices_->below(6)) - 1;
        limits.fileFolder = any("/tmp");
        if (choices_->oneIn(3)) limits.size = number();
        SetScriptLimits(choices_->oneIn(3) ? nullptr : &limits);
    }

    void callbacks() {
        KorvantCallbacks made{};
        made.size = choices_->oneIn(4) ? number() : static_cast<std::uint32_t>(sizeof made);
        if (choices_->oneIn(2)) made.print = [](void*, const char*, std::uint64_t) { return 1; };
        if (choices_->oneIn(2)) made.message = [](void*, const KorvantBuildMessage*) { again(); };
        if (choices_->oneIn(2)) made.box = [](void*, const KorvantBox*) { again(); };
        if (choices_->oneIn(2))
            made.answerBox = [](void*, const KorvantBox*, KorvantBoxAnswer* answer) {
                answer->button = static_cast<std::int32_t>(self_->number());
                answer->text = nullptr;
                again();
                return 1;
            };
        SetScriptCallbacks(choices_->oneIn(3) ? nullptr : &made);
    }

    void prepareAndRun() {
        asIScriptModule* const module = engine()->GetModule("main");
        asIScriptFunction* const function =
            module != nullptr ? module->GetFunctionByName("main") : nullptr;
        if (function != nullptr && choices_->oneIn(2)) context()->Prepare(function);
        RunScript(any(context()));
    }

    void box() {
        KorvantBox* const box = record<KorvantBox>();
        if (box != nullptr) {
            box->style = number();
            box->text = any("text");
            box->caption = any("caption");
        }
        ShowScriptBox(box);
    }

    static inline AnyCalls* self_ = nullptr;
    std::optional<SeededChoices> choices_;
    int depth_ = 0;
    TemporaryFolder folder_;
    std::vector<std::int32_t> lines_;
};

TEST_F(AnyCalls, InAnyOrderEndNothing) {
    const char* const wanted = std::getenv("KORVANT_ANY_CALLS");
    const std::uint64_t seeds = wanted != nullptr ? std::strtoull(wanted, nullptr, 10) : 60;
    for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
        SCOPED_TRACE(seed);
        start(seed);
        for (int i = 0; i < 150; ++i) callSomething();
        SetScriptCallbacks(nullptr);
        SetScriptLimits(nullptr);
        configureAgain();
        ASSERT_TRUE(run("int main() { Print(\"well\"); return 0; }"))
            << seed << messages() << boxes();
        EXPECT_EQ(console.output.substr(console.output.size() - 4), "well");
        console.output.clear();
        frontend.boxes.clear();
    }
}

}  // namespace
}  // namespace korvant::test
