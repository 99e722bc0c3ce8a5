// What comes from outside and is not as one would wish: nothing at all from hosts, markup from
// scripts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/html_text.h"
#include "korvantide/script_object.h"

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
    EXPECT_EQ(boundedHtml("<a href='#x><b>'>t</a>"), "<a>t</a>");
    EXPECT_EQ(boundedHtml("<a href=#x\"onclick=y>t</a>"), "<a>t</a>");
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
