// Forms in little room: everything can be seen or reached.
#include <gtest/gtest.h>
#include <wx/button.h>

#include "form_objects.h"
#include "form_probe.h"
#include "object/form/form_memory.h"
#include "ui/form/form_page_links.h"
#include "ui/kit/html_view.h"

namespace korvant::test {
namespace {

class FormSmall : public testing::TestWithParam<wxSize> {
  protected:
    FormSmall() { remember(GetParam()); }
    ~FormSmall() override { remember(wxSize()); }

    static void remember(wxSize size) {
        const FormRectangle place = {40, 40, size.x, size.y, size.x > 0};
        rememberedRectangle(FormKind::sheet) = place;
        rememberedRectangle(FormKind::dialog) = place;
    }

    bool edit(ScriptObject& object) {
        const bool confirmed = object.edit();
        EXPECT_TRUE(driver_.done());
        return confirmed;
    }

    /// Every button and every part of the page lies inside the form, and the list fills its page.
    static void expectAllInside() {
        const wxRect form = shownForm()->GetScreenRect();
        for (int i = 0; const auto button = findChild<wxButton>(shownForm(), i); ++i)
            EXPECT_TRUE(!button->IsShownOnScreen() || form.Contains(button->GetScreenRect()))
                << button->GetLabel();
        const wxRect list = shownList()->GetScreenRect();
        EXPECT_TRUE(form.Contains(list));
        EXPECT_GT(list.width, form.width - 40);
        EXPECT_GE(list.height, 60);
        const wxRect text = description()->GetScreenRect();
        EXPECT_TRUE(form.Contains(text));
        EXPECT_GE(text.height, 50);
    }

    static ui::HtmlView* description() {
        return findChild<ui::HtmlView>(shownList()->GetGrandParent());
    }

    static std::string named(const char* what) {
        return std::string(what) + "_" + std::to_string(GetParam().x) + "_" +
               std::to_string(ScriptObject::m_locale);
    }

    FormsInstalled forms_;
    FormDriver driver_;
};

TEST_P(FormSmall, EveryPageIsLaidOutWhenItIsFirstShown) {
    for (const int locale : {0, 1, 2}) {
        const LocaleFor language(locale);
        ScriptObject hole;
        makeDrillHole(hole);
        driver_.form("Drill hole").shot(named("small_first")).run(expectAllInside);
        driver_.press(WXK_PAGEDOWN, wxMOD_CONTROL).form("Drill hole").shot(named("small_group"));
        driver_.run(expectAllInside).press(WXK_ESCAPE);
        EXPECT_FALSE(edit(hole));
    }
}

/// The toolkit complains of controls that are left without room for a moment.
TEST_P(FormSmall, AnySizeAfterAnyOtherShowsEveryPart) {
    const LocaleFor spanish(2);
    ScriptObject hole;
    makeDrillHole(hole);
    driver_.form("Drill hole").press(WXK_PAGEDOWN, wxMOD_CONTROL).form("Drill hole");
    for (const wxSize size : {wxSize(900, 800), GetParam(), wxSize(360, 800), wxSize(900, 400)}) {
        driver_.run([size] { resizeContent(*shownForm(), size); });
        driver_.when("the size", [size] { return shownForm()->GetClientSize() == size; });
        driver_.when("the layout", [] {
            return shownForm()->GetScreenRect().Contains(description()->GetScreenRect()) &&
                   shownList()->GetSize().y >= 60;
        });
        driver_.run(expectAllInside);
    }
    driver_.press(WXK_ESCAPE);
    EXPECT_FALSE(edit(hole));
}

TEST_P(FormSmall, ALongMessageCanBeReadWithoutAMouse) {
    const LocaleFor english(0);
    std::string message = "The length must be positive.";
    for (int i = 0; i < 12; ++i) message += "<br>Line " + std::to_string(i) + " of the reason.";
    ScriptObject object;
    object.setTitle("Long");
    object.addProperty("a", "Length", 0.0, "m", true);
    object.addErrorConstraint("a", "a>0", message);
    driver_.form("Long").row("Length").when("room for the message", [] {
        return description()->GetSize().y >= std::min(110, shownForm()->GetClientSize().y / 5);
    });
    driver_.shot(named("small_message"));
    driver_.press(WXK_F6).when("the description", [] { return description()->HasFocus(); });
    driver_.press(WXK_END).when("its end", [] { return description()->GetViewStart().y > 0; });
    driver_.press(WXK_ESCAPE).form("Long").pointAtValue("Length").when("the message as a tip", [] {
        return shownList()->GetToolTipText().StartsWith("The length must be positive.\nLine 0");
    });
    driver_.press(WXK_ESCAPE);
    EXPECT_FALSE(edit(object));
}

INSTANTIATE_TEST_SUITE_P(InLittleRoom, FormSmall,
                         testing::Values(wxSize(360, 420), wxSize(620, 520)));

class FormSearch : public testing::Test {
  protected:
    static wxString links() {
        const auto line = findChild<ui::FormPageLinks>(shownForm());
        return line ? line->text() : wxString();
    }

    static void makePages(ScriptObject& object, int count) {
        object.setTitle("Pages");
        for (int i = 0; i < count; ++i) {
            const std::string number = std::to_string(i);
            object.addClass("Page number " + number, true);
            object.addProperty("p" + number, "Value of page " + number, i, "", true);
        }
    }

    FormsInstalled forms_;
    LocaleFor english_{0};
    ScriptObject object_;
    FormDriver driver_;
};

TEST_F(FormSearch, RowsOnOtherPagesAreToldAndReached) {
    makePages(object_, 3);
    driver_.form("Pages").press('F', wxMOD_CONTROL).enter("page 2");
    driver_.when("where it is", [] { return links().StartsWith("Also found on: Page number 2"); });
    driver_.shot("search_elsewhere").press(WXK_RETURN).row("Value of page 2").form("Pages");
    driver_.press(WXK_ESCAPE).when("no line", [] { return links().empty(); });
    driver_.press('F', wxMOD_CONTROL).enter("xyz");
    driver_.when("no hit", [] { return links() == "Nothing found."; }).press(WXK_ESCAPE);
    driver_.when("no line", [] { return links().empty(); }).press(WXK_ESCAPE);
    EXPECT_FALSE(object_.edit());
    EXPECT_TRUE(driver_.done());
}

TEST_F(FormSearch, MarksOfTabsOutOfSightAreTold) {
    makePages(object_, 20);
    object_.addErrorConstraint("p15", "p15>99", "small");
    object_.addWarningConstraint("p17", "p17>99", "small");
    driver_.form("Pages").when("the marks", [] {
        return links().Contains("Page number 15") && links().Contains("Page number 17");
    });
    driver_.shot("many_tabs").press(WXK_ESCAPE);
    EXPECT_FALSE(object_.edit());
    EXPECT_TRUE(driver_.done());
}

}  // namespace
}  // namespace korvant::test
