// What the system does for us: it keeps answers in its registry, shows texts, and asks for files.
#include <gtest/gtest.h>
#include <wx/dcmemory.h>
#include <wx/fontutil.h>
#include <wx/graphics.h>
#include <wx/image.h>
#include <wx/msw/wrapwin.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "base/system/wide_text_win32.h"
#include "support/temporary_folder.h"
#include "support/ui_driver.h"
#include "ui/editor/editor_file_dialog.h"
#include "ui/kit/clipboard.h"
#include "ui/kit/settings_store.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/theme.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/ui_runtime.h"

using namespace korvant;
using korvant::test::TemporaryFolder;
using korvant::test::UiDriver;
using korvant::test::writeFile;

namespace {

constexpr wchar_t kSettings[] = L"Software\\KorvantIDE tests\\Registry";

TEST(Registry, SettingsAreUnderTheNamesOfCompanyAndModule) {
    {
        const auto store = ui::openSettings("KorvantIDE tests", "Registry");
        ASSERT_NE(store, nullptr);
        EXPECT_TRUE(store->Write("/DoNotShow/0123456789abcdef", 6L) && store->Flush());
    }
    DWORD value = 0, size = sizeof value;
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, (std::wstring(kSettings) + L"\\DoNotShow").c_str(),
                           L"0123456789abcdef", RRF_RT_REG_DWORD, nullptr, &value, &size),
              ERROR_SUCCESS);
    EXPECT_EQ(value, 6U);
    EXPECT_EQ(ui::openSettings("KorvantIDE tests", "Registry")->ReadLong("/DoNotShow/none", 3), 3);
    EXPECT_EQ(ui::openSettings("Up\\and\\away", "Registry"), nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, kSettings);
}

bool leavesInk(const wxFont& font) {
    wxBitmap bitmap(200, 60, 24);
    wxMemoryDC dc(bitmap);
    dc.SetBackground(*wxWHITE_BRUSH);
    dc.Clear();
    {
        const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
        context->SetFont(font, *wxBLACK);
        context->DrawText("Variables", 5, 5);
    }
    dc.SelectObject(wxNullBitmap);
    const wxImage image = bitmap.ConvertToImage();
    const unsigned char* bytes = image.GetData();
    return std::any_of(bytes, bytes + 200 * 60 * 3, [](unsigned char byte) { return byte < 128; });
}

TEST(PaintedTexts, ShowUnderTheNamesOfTheSystem) {
    ASSERT_TRUE(ui::startToolkit());
    EXPECT_TRUE(leavesInk(ui::dialogFont())) << ui::dialogFont().GetFaceName();
    for (const char* name : {"MS Shell Dlg", "MS Shell Dlg 2", "MS Sans Serif", "System"}) {
        wxFont font = ui::dialogFont();
        wxNativeFontInfo named = *font.GetNativeFontInfo();
        named.SetFaceName(name);
        font.SetNativeFontInfo(named);
        const wxFont found = ui::native::paintable(font);
        EXPECT_TRUE(leavesInk(found)) << name << ": " << found.GetFaceName();
        EXPECT_EQ(found.GetPointSize(), font.GetPointSize()) << name;
    }
}

/// The system's dialog, which the toolkit does not know, is answered by its title.
class FileDialogs : public testing::Test {
  protected:
    FileDialogs() {
        driver.onTimeout = [] {
            PostMessageW(FindWindowW(nullptr, L"Choose a script"), WM_COMMAND, IDCANCEL, 0);
        };
    }

    static bool inFront(const std::string& title) {
        wchar_t text[256];
        const int length = GetWindowTextW(GetForegroundWindow(), text, 256);
        return utf8OfWide({text, static_cast<std::size_t>(length)}) == title;
    }

    void untilAsked() {
        driver.when("the dialog", [] { return inFront("Choose a script"); });
    }

    /// Pastes the path over the name that is offered.
    void choose(const std::string& path) {
        untilAsked();
        driver.run([path] { ui::copyToClipboard(ui::fromUtf8(path)); });
        driver.key('A', wxMOD_CONTROL).key('V', wxMOD_CONTROL).key(WXK_RETURN);
    }

    std::optional<std::string> ask(bool saving) {
        FileDialogRequest request;
        request.title = "Choose a script";
        request.saving = saving;
        request.fileMustExist = !saving;
        request.filters = {{"Scripts (*.as)", "*.as"}, {"All files (*.*)", "*.*"}};
        const auto path = ui::chooseScriptFile(nullptr, request);
        EXPECT_TRUE(driver.done());
        return path;
    }

    TemporaryFolder folder;
    UiDriver driver;
};

TEST_F(FileDialogs, GivePathsOfAnyLetters) {
    const std::string path = utf8OfWide((folder.path() / L"sond\u00E9 \u20AC \u0416.as").wstring());
    choose(path);
    EXPECT_EQ(ask(true), path) << "a file that is to be written need not exist";
    writeFile(wideOfUtf8(path), "x");
    choose(path);
    EXPECT_EQ(ask(false), path);
}

TEST_F(FileDialogs, OnlyAFileThatIsThereIsOpened) {
    choose(utf8OfWide((folder.path() / L"missing.as").wstring()));
    driver.when("a complaint", [] { return GetForegroundWindow() && !inFront("Choose a script"); });
    driver.key(WXK_RETURN);
    untilAsked();
    driver.key(WXK_ESCAPE);
    EXPECT_EQ(ask(false), std::nullopt);
}

}  // namespace
