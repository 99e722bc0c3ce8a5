// Fixed texts and codes, byte by byte.
#include <gtest/gtest.h>

#include "base/text/text_encoding.h"
#include "korvantide/script_object.h"
#include "object/form/form_texts.h"
#include "object/script/box_codes.h"

namespace korvant::test {
namespace {

class InLocale {
  public:
    explicit InLocale(std::int32_t locale) { ScriptObject::m_locale = locale; }
    ~InLocale() { ScriptObject::m_locale = 0; }
};

struct Caption {
    unsigned long key;
    const char* texts[3];  ///< in UTF-8
};

const Caption kCaptions[] = {
    {1, {"OK", "OK", "Autorización"}},
    {2, {"Cancel", "Annuler", "Cancelación"}},
    {3, {"Abort", "Arrêt", "Paro"}},
    {4, {"Retry", "Réessayer", "Recomprobación"}},
    {5, {"Ignore", "Ignorer", "Ignorar"}},
    {6, {"Yes", "Oui", "Sí"}},
    {7, {"No", "Non", "No"}},
    {9, {"Help", "Aide", "Ayuda"}},
    {10, {"Try again", "Essayer encore", "Intentar aún"}},
    {11, {"Continue", "Continuer", "Continúe"}},
    {14, {"Skip", "Sauter", "Salto"}},
    {15, {"Skip all", "Sauter tout", "Saltar todo"}},
    {16, {"Ignore all", "Ignorer tout", "Ignorar todo"}},
    {19, {"Yes to all", "Oui pour tous", "Sí para todos"}},
    {20, {"No to all", "Non pour tous", "No para todos"}},
    {21, {"Report", "Rapport", "Informe"}},
    {30, {"More >>", "En detail >>", "Más información >>"}},
    {31, {"<< More", "<< En detail", "<< Más información"}},
    {0x1000000, {"Do not show again", "Ne plus afficher ce message", "No muestre otra vez"}},
};

TEST(ButtonCaptions, AreTheTableInEachLanguage) {
    for (const std::int32_t locale : {0, 1, 2, 3, 5, 2147483647}) {
        const InLocale in(locale);
        const std::size_t column = locale > 2 ? 0 : static_cast<std::size_t>(locale);
        std::map<unsigned long, const char*> captions;
        ScriptObject().translate(&captions);
        ASSERT_EQ(captions.size(), std::size(kCaptions)) << locale;
        for (const Caption& one : kCaptions)
            EXPECT_EQ(captions[one.key], encodeWestern(one.texts[column])) << locale;
    }
}

TEST(ButtonCaptions, NeverReplaceOneThatIsThereAndNeedALanguage) {
    std::map<unsigned long, const char*> captions{{2, "Stop"}};
    ScriptObject().translate(&captions);
    EXPECT_STREQ(captions[2], "Stop");
    EXPECT_STREQ(captions[1], "OK");
    const InLocale in(-1);
    std::map<unsigned long, const char*> none;
    ScriptObject().translate(&none);
    EXPECT_TRUE(none.empty());
    ScriptObject().translate(static_cast<std::map<unsigned long, const char*>*>(nullptr));
}

TEST(Summaries, AreTheTableInEachLanguage) {
    const char* const kTexts[4][3] = {
        {"There are warnings", "Il y a des avertissements", "Hay advertencias"},
        {"There is a warning", "Il y a un avertissement", "Hay una advertencia"},
        {"There are errors", "Il y a des erreurs", "Hay errores"},
        {"There is an error", "Il y a une erreur", "Hay un error"},
    };
    for (const std::int32_t locale : {-1, 0, 1, 2, 3}) {
        const std::size_t column =
            locale == 1 || locale == 2 ? static_cast<std::size_t>(locale) : 0;
        EXPECT_EQ(warningSummary(true, locale), kTexts[0][column]);
        EXPECT_EQ(warningSummary(false, locale), kTexts[1][column]);
        EXPECT_EQ(errorSummary(true, locale), kTexts[2][column]);
        EXPECT_EQ(errorSummary(false, locale), kTexts[3][column]);
        EXPECT_EQ(defaultCategoryCaption(locale), locale == 1 ? "G\351n\351ral" : "General");
    }
}

TEST(FormTexts, AreSaidInThreeLanguages) {
    for (int i = 1; i < static_cast<int>(FormText::count_); ++i) {
        const auto text = static_cast<FormText>(i);
        for (const std::int32_t locale : {0, 1, 2}) EXPECT_NE(formText(text, locale), "") << i;
        EXPECT_EQ(formText(text, 7), formText(text, 0));
    }
    EXPECT_EQ(formText(FormText::ok, 2), encodeWestern("Autorización"));
    EXPECT_EQ(formText(FormText::cancel, 2), encodeWestern("Cancelación"));
    EXPECT_EQ(formText(FormText::noFindings, 0), "No errors or warnings");
    EXPECT_EQ(formText(FormText::noFindings, 1), "Aucune erreur ni avertissement");
    EXPECT_EQ(formText(FormText::noFindings, 2), "No hay errores ni advertencias");
    EXPECT_EQ(formText(FormText::count_, 0), "");
}

struct Constant {
    const char* name;
    std::int32_t value;
};

TEST(Constants, AreFoundByExactlyTheirName) {
    const Constant kConstants[] = {
        {"BU_ABORT_RETRY_IGNORE", 1},
        {"BU_CANCEL_TRY_CONTINUE", 2},
        {"BU_CONTINUE_ABORT", 3},
        {"BU_IGNORE_ALL_CANCEL", 4},
        {"BU_RETRY_CANCEL", 5},
        {"BU_SKIP_ALL_CANCEL", 6},
        {"BU_YES_NO", 7},
        {"BU_YES_NO_CANCEL", 8},
        {"BU_YES_NO_ALL", 9},
        {"BU_YES_NO_ALL_CANCEL", 10},
        {"BU_YES_ALL_NO", 11},
        {"BU_YES_ALL_NO_CANCEL", 12},
        {"BU_YES_ALL_NO_ALL", 13},
        {"BU_YES_ALL_NO_ALL_CANCEL", 14},
        {"BU_OK", 15},
        {"BU_OK_CANCEL", 16},
        {"IC_WARNING", 100},
        {"IC_ERROR", 101},
        {"IC_INFORMATION", 102},
        {"IC_QUESTION", 103},
        {"ID_ABORT", 201},
        {"ID_CANCEL", 202},
        {"ID_CLOSE", 203},
        {"ID_CONTINUE", 204},
        {"ID_IGNORE", 205},
        {"ID_IGNOREALL", 206},
        {"ID_NO", 207},
        {"ID_NOTOALL", 208},
        {"ID_OK", 209},
        {"ID_RETRY", 210},
        {"ID_SKIP", 211},
        {"ID_SKIPALL", 212},
        {"ID_TRYAGAIN", 213},
        {"ID_YES", 214},
        {"ID_YESTOALL", 215},
    };
    ScriptObject object;
    for (const Constant& one : kConstants) {
        std::string name = one.name;
        EXPECT_EQ(object.VAL(name), one.value) << name;
        for (std::string other : {name + " ", " " + name, name + std::string(1, '\0')})
            EXPECT_EQ(object.VAL(other), 0) << other;
        name[0] = static_cast<char>(name[0] + 32);
        EXPECT_EQ(object.VAL(name), 0) << name;
    }
    std::string empty;
    EXPECT_EQ(object.VAL(empty), 0);
}

TEST(BoxCodes, GiveTheStyleAndTheAnswer) {
    constexpr std::uint32_t kAlways = 0x40040000;
    const std::uint32_t kStyles[] = {
        2,          6,          7,         9,         5,          8,          4, 3,
        0x10000004, 0x10000003, 0x8000004, 0x8000003, 0x18000004, 0x18000003, 0, 1};
    for (std::int32_t i = 0; i < 16; ++i) EXPECT_EQ(boxStyle(i + 1, 0), kStyles[i] | kAlways) << i;
    for (const std::int32_t unknown : {-1, 0, 17, 2147483647, -2147483647 - 1})
        EXPECT_EQ(boxStyle(unknown, unknown), kAlways) << unknown;
    EXPECT_EQ(boxStyle(15, 100), kAlways | 48);
    EXPECT_EQ(boxStyle(15, 101), kAlways | 16);
    EXPECT_EQ(boxStyle(15, 102), kAlways | 64);
    EXPECT_EQ(boxStyle(15, 103), kAlways | 32);
    EXPECT_EQ(boxStyle(15, 104), kAlways);
    const std::int32_t kAnswers[] = {0,   209, 202, 201, 210, 205, 214, 207, 203, 0,  213,
                                     204, 0,   0,   211, 212, 206, 0,   0,   215, 208};
    for (int i = 0; i <= 20; ++i) EXPECT_EQ(boxAnswer(i), kAnswers[i]) << i;
    for (const int other : {-1, 21, 30, 32, 1000}) EXPECT_EQ(boxAnswer(other), 0);
}

TEST(Translations, FollowTheLanguageOfTheModule) {
    ScriptObject object;
    object.addTranslation(1, "Depth", "Profondeur");
    object.addTranslation(2, "Depth", "Profundidad");
    object.addTranslation(1, "Site", "Lieu");
    object.addTranslation(1, "Site", "Endroit");
    struct Case {
        std::int32_t locale;
        const char* depth;
        const char* site;
    };
    for (const Case& one :
         {Case{0, "Depth", "Site"}, Case{1, "Profondeur", "Endroit"},
          Case{2, "Profundidad", "Site"}, Case{3, "Depth", "Site"}, Case{-1, "Depth", "Site"},
          Case{-2147483647 - 1, "Depth", "Site"}, Case{2147483647, "Depth", "Site"}}) {
        object.setLocale(one.locale);
        EXPECT_EQ(object.getLocale(), one.locale);
        EXPECT_EQ(object.translate("Depth"), one.depth);
        EXPECT_EQ(object.translate("Site"), one.site);
        EXPECT_EQ(object.translate("depth"), "depth");
        EXPECT_EQ(object.translate(std::vector<std::string>{"Site", "x", "Depth"}),
                  (std::vector<std::string>{one.site, "x", one.depth}));
        EXPECT_EQ(object.translate(std::map<long, std::string>{{7, "Depth"}}),
                  (std::map<long, std::string>{{7, one.depth}}));
        EXPECT_EQ(object.translate(std::map<long, std::vector<std::string>>{{3, {"Site", "a"}}}),
                  (std::map<long, std::vector<std::string>>{{3, {one.site, "a"}}}));
    }
    ScriptObject::m_locale = 0;
}

/// A language far beyond the ones there are must not cost a table for each in between.
TEST(Translations, AreKeptUpToLanguage1000AndIgnoredBeyond) {
    ScriptObject object;
    for (const std::int32_t locale : {0, -1, -2147483647 - 1, 1001, 2147483647})
        object.addTranslation(locale, "a", "b");
    object.addTranslation(1000, "a", "c");
    for (const std::int32_t locale : {-2147483647 - 1, -1, 0, 1, 999, 1001, 2147483647}) {
        const InLocale in(locale);
        EXPECT_EQ(object.translate("a"), "a") << locale;
    }
    const InLocale in(1000);
    EXPECT_EQ(object.translate("a"), "c");
}

}  // namespace
}  // namespace korvant::test
