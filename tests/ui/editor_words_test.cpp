// The words of the window: in every language there is one, of a length that fits.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "korvantide/script_object.h"
#include "language/sentence.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/window_words.h"

using namespace korvant;

namespace {

class InLanguage {
  public:
    explicit InLanguage(int language) : before_(ScriptObject::m_locale) {
        ScriptObject::m_locale = language;
    }
    ~InLanguage() { ScriptObject::m_locale = before_; }

  private:
    int before_;
};

std::string placeholders(const char* text) {
    std::string found;
    for (const char* at = text; (at = std::strchr(at, '%')) != nullptr; ++at)
        found += std::string(at, std::strcspn(at, "dsu") + 1) + " ";
    return found;
}

TEST(EditorWords, AreInOrderAndTakeTheSameValues) {
    const auto rows = ui::windowWords();
    EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end(), [](const auto& a, const auto& b) {
        return std::strcmp(a.english, b.english) < 0;
    }));
    for (const ui::WindowWords& row : rows) {
        EXPECT_EQ(placeholders(row.english), placeholders(row.french)) << row.english;
        EXPECT_EQ(placeholders(row.english), placeholders(row.spanish)) << row.english;
    }
}

TEST(EditorWords, SayWhyANameCannotBeChanged) {
    for (const char* const pattern : sentences::kAll)
        for (const int language : {1, 2}) {
            const InLanguage scope(language);
            EXPECT_NE(ui::toUtf8(ui::words(pattern)), pattern) << language;
        }
    const InLanguage scope(1);
    const Sentence taken{sentences::kTaken, {"100 %s", "b"}};
    EXPECT_EQ(taken.filled(ui::toUtf8(ui::words(taken.pattern.c_str()))),
              "« 100 %s » est déjà pris là où « b » est utilisé");
}

TEST(EditorWords, FollowTheLanguageOfTheModule) {
    const auto said = [](int language) {
        const InLanguage scope(language);
        return ui::toUtf8(ui::words("Step over")) + " " + ui::toUtf8(ui::words("no such words"));
    };
    EXPECT_EQ(said(0), "Step over no such words");
    EXPECT_EQ(said(1), "Pas suivant no such words");
    EXPECT_EQ(said(2), "Paso siguiente no such words");
}

}  // namespace
