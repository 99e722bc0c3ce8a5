// The message box, answered with real keys.
#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/toplevel.h>

#include <string>
#include <vector>

#include "host/services/frontend.h"
#include "korvantide/script_object.h"
#include "support/ui_driver.h"
#include "ui/boxes/message_box_dialog.h"
#include "ui/boxes/remembered_answers.h"
#include "ui/kit/clipboard.h"
#include "ui/kit/html_view.h"
#include "ui/kit/readable_markup.h"
#include "ui/kit/toolkit_asserts.h"
#include "ui/kit/ui_native.h"

using namespace korvant;
using korvant::test::findActive;
using korvant::test::findChild;
using korvant::test::findWindow;
using korvant::test::UiDriver;

namespace {

MessageBoxRequest box(std::uint32_t style, const std::string& text = "Carry on?") {
    MessageBoxRequest request;
    request.caption = "Box";
    request.text = text;
    request.style = style;
    return request;
}

int ask(UiDriver& driver, const MessageBoxRequest& request) {
    const int answer = ui::showMessageBox(request);
    EXPECT_TRUE(driver.done());
    return answer;
}

int answerTo(const MessageBoxRequest& request, const std::vector<int>& keys) {
    UiDriver driver;
    driver.window("Box");
    for (const int key : keys) driver.key(key);
    return ask(driver, request);
}

/// Who asks the user about it would leave the box without an answer.
TEST(MessageBox, WhatTheToolkitRefusesIsNotAskedOfTheUser) {
    static int heard = 0, ofHost = 0;
    UiDriver driver;
    ui::setAssertListener(
        [](const char* what) { heard += std::string(what).ends_with("no sense"); });
    const auto refuse = [] { wxFAIL_MSG("no sense"); };
    driver.window("Box").run(refuse).key(WXK_RETURN);
    const wxAssertHandler_t before = wxSetAssertHandler(
        [](const wxString&, int, const wxString&, const wxString&, const wxString&) { ++ofHost; });
    EXPECT_EQ(ask(driver, box(box_style::kOk)), box_button::kOk);
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(ofHost, 0);
    refuse();
    EXPECT_EQ(ofHost, 1);
    wxSetAssertHandler(before);
}

TEST(MessageBox, KeysAnswer) {
    using namespace box_style;
    using namespace box_button;
    struct Case {
        std::uint32_t style;
        std::vector<int> keys;
        int answer;
    };
    const Case cases[] = {
        {box_style::kOk, {WXK_RETURN}, box_button::kOk},
        {box_style::kOk, {WXK_ESCAPE}, box_button::kOk},
        {kOkCancel, {WXK_RETURN}, box_button::kOk},
        {kOkCancel | kIconWarning, {WXK_RETURN}, kCancel},
        {kOkCancel | kIconError, {WXK_LEFT, WXK_RETURN}, box_button::kOk},
        {box_style::kYesNo, {'Y'}, kYes},
        {box_style::kYesNo | kIconQuestion, {'N'}, kNo},
        {box_style::kYesNo, {WXK_ESCAPE}, kNo},
        {kYesNoCancel, {WXK_ESCAPE}, kCancel},
        {kYesNoCancel, {WXK_RIGHT, WXK_RETURN}, kNo},
        {kYesNoCancel, {WXK_TAB, WXK_TAB, WXK_SPACE}, kCancel},
        {kAbortRetryIgnore, {WXK_ESCAPE}, 0},
        {kAbortRetryIgnore, {'R'}, kRetry},
        {kContinueAbort, {WXK_LEFT, WXK_RETURN}, kAbort},
        {box_style::kYesNo | box_style::kYesToAll, {WXK_RIGHT, WXK_RETURN}, box_button::kYesToAll},
        {kYesNoCancel | box_style::kYesToAll | box_style::kNoToAll,
         {WXK_RIGHT, WXK_RIGHT, WXK_RIGHT, WXK_RETURN},
         box_button::kNoToAll},
    };
    for (const Case& c : cases) EXPECT_EQ(answerTo(box(c.style), c.keys), c.answer) << c.style;
}

TEST(MessageBox, AllOfALongPathCanBeSeen) {
    UiDriver driver;
    driver.window("Box").run([] {
        const auto view = findChild<ui::HtmlView>(findWindow("Box"));
        ASSERT_NE(view, nullptr);
        const wxHtmlContainerCell* cell = view->GetInternalRepresentation();
        EXPECT_LE(cell->GetWidth(), view->GetClientSize().x);
        EXPECT_FALSE(view->needsScrolling());
        EXPECT_EQ(view->text().Freq('\n'), 1);
        for (const wxHtmlCell* piece = cell->GetFirstTerminal(); piece; piece = piece->GetNext())
            EXPECT_LE(piece->GetAbsPos().x + piece->GetWidth(), view->GetClientSize().x);
    });
    driver.key(WXK_RETURN);
    std::string path = "/home";
    for (int i = 0; i < 30; ++i) path += "/surveys_of_the_north_" + std::to_string(i);
    MessageBoxRequest request = box(box_style::kOk, path + "\n" + std::string(300, 'w'));
    request.plain = true;
    ask(driver, request);
}

TEST(MessageBox, DefaultButtonIsMarkedFromTheStart) {
    UiDriver driver;
    const auto marked = [](int index) {
        return
            [index] { return test::looksDefault(*findChild<wxButton>(findWindow("Box"), index)); };
    };
    driver.window("Box").run([&] {
        EXPECT_TRUE(test::showsFocus(*findWindow("Box")));
        EXPECT_TRUE(marked(0)());
        EXPECT_FALSE(marked(1)());
    });
    driver.key(WXK_RIGHT).when("the other is marked", [&] { return marked(1)() && !marked(0)(); });
    driver.key(WXK_RETURN);
    EXPECT_EQ(ask(driver, box(box_style::kYesNo)), box_button::kNo);
}

/// The first window of a process waits for the window manager before it shows.
TEST(MessageBox, FocusIsMarkedHoweverLateTheWindowShows) {
    UiDriver driver;
    wxDialog window(nullptr, wxID_ANY, "Late");
    auto* button = new wxButton(&window, wxID_ANY, "First");
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(button);
    window.SetSizerAndFit(row);
    ui::native::showFocus(window);
    bool painted = false;
    window.Bind(wxEVT_PAINT, [&](wxPaintEvent& event) {
        painted = true;
        event.Skip();
    });
    driver.when("the window", [&] { return painted; });
    driver.run([&] { EXPECT_TRUE(test::showsFocus(window)); });
    button->SetFocus();
    window.Show();
    EXPECT_TRUE(driver.finish());
}

TEST(MessageBox, LetterOpensTheDetails) {
    UiDriver driver;
    driver.window("Box").key('M').when(
        "the details", [] { return findChild<ui::HtmlView>(findWindow("Box"), 1) != nullptr; });
    driver.key('M').when("the text alone",
                         [] { return findChild<ui::HtmlView>(findWindow("Box"), 1) == nullptr; });
    driver.key(WXK_ESCAPE);
    MessageBoxRequest request = box(box_style::kOk);
    request.details = "Why not";
    ask(driver, request);
}

TEST(MessageBox, ColoursOfScriptsAreReadable) {
    const wxColour dark(0x35, 0x35, 0x35), light(0xF6, 0xF5, 0xF4);
    const wxColour onDark = ui::readableOn(*wxBLUE, dark, *wxWHITE);
    EXPECT_GT(onDark.GetLuminance(), 0.45);
    EXPECT_EQ(ui::readableOn(*wxBLUE, light, *wxBLACK), *wxBLUE);
    EXPECT_EQ(ui::readableColours("<font color=\"#0000FF\">a</font>", light, *wxBLACK),
              "<font color=\"#0000FF\">a</font>");
    EXPECT_NE(ui::readableColours("<font color=\"blue\">a</font>", dark, *wxWHITE),
              "<font color=\"blue\">a</font>");
}

TEST(MessageBox, ClosingAnswersLikeEscape) {
    for (const auto& [style, answer] :
         {std::pair{box_style::kYesNo, box_button::kNo}, {box_style::kAbortRetryIgnore, 0}}) {
        UiDriver driver;
        driver.window("Box").close("Box");
        EXPECT_EQ(ask(driver, box(style)), answer);
    }
}

}  // namespace
