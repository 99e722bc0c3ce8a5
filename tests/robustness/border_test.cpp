// What comes from outside and is not as one would wish: nothing at all from hosts, or too much at
// once, and markup from scripts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <thread>

#include "base/text/html_text.h"
#include "korvantide/host_interface.h"
#include "korvantide/korvantide.h"
#include "korvantide/script_object.h"
#include "module/configuration.h"
#include "support/script_fixture.h"

namespace korvant::test {

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(NullArguments, AreEmptyTextsAndRefusedResults) {
    const char* const nothing = nullptr;
    ScriptObject object;
    EXPECT_TRUE(object.addProperty("text", "Text", nothing, true, true));
    EXPECT_TRUE(object.addProperty("file", "File", nothing, nothing, true, true));
    EXPECT_TRUE(object.addProperty("d", "D", 1.5, nothing, true));
    std::string text = "before";
    EXPECT_TRUE(object.getProperty("text", &text));
    EXPECT_EQ(text, "");
    EXPECT_TRUE(object.setProperty("text", nothing));
    EXPECT_FALSE(object.getProperty("text", static_cast<std::string*>(nullptr)));
    EXPECT_FALSE(object.getProperty("d", static_cast<double*>(nullptr)));
    EXPECT_FALSE(object.getProperty("d", static_cast<float*>(nullptr)));
    EXPECT_FALSE(object.getProperty("d", static_cast<int*>(nullptr)));
    EXPECT_FALSE(object.getProperty("d", static_cast<long*>(nullptr)));
    EXPECT_FALSE(object.getProperty("d", static_cast<bool*>(nullptr)));
    object.resetIterators();
    EXPECT_FALSE(object.getNextClass(nullptr, nullptr));
    EXPECT_FALSE(object.getNextCategory(nullptr));
    EXPECT_FALSE(object.getNextProperty(nullptr, nullptr));
    EXPECT_FALSE(object.getGroup("none", 0, nullptr));
    EXPECT_FALSE(object.addListener("none", nullptr));
    object.translate(static_cast<std::map<unsigned long, const char*>*>(nullptr));
}

const std::string kShortScript = "int main() { return 0; }";

class TwoThreads : public ScriptFixture {
  protected:
    TwoThreads() {
        engine()->RegisterGlobalFunction("void meanwhile()", asFUNCTION(callMeanwhile),
                                         asCALL_CDECL);
    }
    static void onAnotherThread(const std::function<void()>& calls) {
        std::thread([&] {
            calls();
            asThreadCleanup();
        }).join();
    }

    static inline std::function<void()> meanwhile;  ///< what scripts call by that name

  private:
    static void callMeanwhile() { meanwhile(); }
};

TEST_F(TwoThreads, ThatMeetInTheModuleAreToldApart) {
    KorvantLimits limits{};
    limits.size = sizeof limits;
    KorvantRunResult result{};
    result.size = sizeof result;
    KorvantBuildMessage message{};
    message.size = sizeof message;
    const auto calls = [&] {
        EXPECT_EQ(configureEngine(engine()), nullptr);
        EXPECT_EQ(CompileScript(engine(), kShortScript), 0);
        EXPECT_LT(RunScript(context()), 0);
        EXPECT_FALSE(RunApplication(engine(), context(), kShortScript, nullptr));
        EXPECT_FALSE(ContinueApplication(engine(), context(), nullptr, 0));
        ReleaseScriptEngine(engine());
        GetScriptLimits(&limits);
        EXPECT_EQ(SetScriptLimits(nullptr), 0);
        GetLastRunResult(&result);
        EXPECT_EQ(CountBuildMessages(), 0u);
        EXPECT_EQ(GetBuildMessage(0, &message), 0);
        EXPECT_EQ(GetUnwrittenFile(0), nullptr);
    };
    meanwhile = [&] { onAnotherThread(calls); };
    EXPECT_TRUE(RunApplication(engine(), context(),
                               "int main() { meanwhile(); Print(\"on\"); return 0; }", nullptr));
    EXPECT_EQ(console.output, "on");
    EXPECT_TRUE(frontend.boxes.empty());  // which would stand on a thread without windows
    EXPECT_EQ(limits.size, 0u);
    EXPECT_EQ(result.size, 0u);
}

TEST_F(TwoThreads, ThatTakeTurnsAreBothServed) {
    onAnotherThread([&] {
        EXPECT_EQ(CompileScript(engine(), "not a script"), 0);
        EXPECT_GT(CountBuildMessages(), 0u);
    });
    EXPECT_GT(CountBuildMessages(), 0u);
    EXPECT_TRUE(RunApplication(engine(), context(), kShortScript, nullptr));
    onAnotherThread(
        [&] { EXPECT_TRUE(RunApplication(engine(), context(), kShortScript, nullptr)); });
}

TEST_F(TwoThreads, TheStopOfOneReachesTheRunOfTheOther) {
    meanwhile = [] { onAnotherThread(RequestScriptStop); };
    EXPECT_FALSE(RunApplication(engine(), context(),
                                "int main() { meanwhile(); while (true) {} return 0; }", nullptr));
    EXPECT_EQ(session().lastFailure().kind, RunFailure::Kind::stopped);
}

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

TEST(BoundedHtml, FetchesNothingAndRunsNothing) {
    for (const char* text :
         {"<img src=\"http://example.org/x.png\">", "<script>while(1);</script>",
          "<iframe src=file:///etc/passwd></iframe>", "<link rel=stylesheet href=//x>",
          "<object data=x></object>", "<meta http-equiv=refresh content=0>",
          "<b style=\"background:url(http://x)\">", "<p onclick=\"x()\">"}) {
        const std::string html = boundedHtml(std::string(text) + "rest");
        for (const char* never : {"src", "http", "script", "file:", "style", "onclick", "data="})
            EXPECT_THAT(html, Not(HasSubstr(never))) << text;
        EXPECT_THAT(html, HasSubstr("rest")) << text;
    }
}

TEST(BoundedHtml, ClosesWhatIsOpenAndKeepsWhatIsNoTag) {
    EXPECT_EQ(boundedHtml("<b>bold"), "<b>bold</b>");
    EXPECT_EQ(boundedHtml("<a href='#top'>t</a>"), "<a href=\"#top\">t</a>");
    for (const char* elsewhere : {"http://example.org/", "//x", "file:///etc", "x#top", ""})
        EXPECT_EQ(boundedHtml("<a href=\"" + std::string(elsewhere) + "\">t</a>"), "<a>t</a>");
    EXPECT_EQ(boundedHtml("<a href=http://example.org>t</a>"), "<a>t</a>");
    EXPECT_EQ(boundedHtml("<a href='#x><b>'>t</a>"), "<a>t</a>");
    EXPECT_EQ(boundedHtml("<a href=#x\"onclick=y>t</a>"), "<a>t</a>");
    EXPECT_EQ(boundedHtml("<font color=" + std::string(65, 'r') + ">t</font>"), "<font>t</font>");
    EXPECT_EQ(boundedHtml("a < b && c > d"), "a &lt; b &amp;&amp; c &gt; d");
    EXPECT_THAT(boundedHtml("<b><i>x</b></i>"), HasSubstr("</i></b>"));
}

TEST(BoundedHtml, DepthAndLengthHaveTheirLimits) {
    const std::string deep = boundedHtml(repeated("<div>", 10'000) + "x");
    EXPECT_LE(deep.size(), 12u * kHtmlDepth);
    EXPECT_THAT(deep, HasSubstr("x"));
    const std::string tables = boundedHtml(repeated("<table><tr><td>", 1000) + "x");
    EXPECT_LE(tables.size(), 4000u);
    const std::string longText = boundedHtml(std::string(4 * kHtmlBytes, 'a'));
    EXPECT_LE(longText.size(), kHtmlBytes + 16);
    EXPECT_THAT(longText, HasSubstr("..."));
}

}  // namespace

}  // namespace korvant::test
