// The icons of the window are read from their texts.
#include <gtest/gtest.h>
#include <wx/dcmemory.h>
#include <wx/graphics.h>
#include <wx/image.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/ui_driver.h"
#include "ui/kit/icon_painter.h"
#include "ui/kit/look.h"

using namespace korvant::ui;

namespace {

TEST(EditorIcons, TextsAreReadWhole) {
    for (int i = 0; i < static_cast<int>(Icon::count_); ++i) {
        const auto& layers = iconLayers(static_cast<Icon>(i));
        ASSERT_FALSE(layers.empty()) << i;
        for (const IconLayer& layer : layers) EXPECT_FALSE(layer.steps.empty()) << i;
    }
    const auto layers =
        readIcon("stroke 1.3: M4 1.75 H9.25 V3 L1 2 Z; fill 2nd: O 8 8 2 R 1 2 3 4 5");
    ASSERT_EQ(layers.size(), 2u);
    EXPECT_EQ(layers[0].strokeWidth, 1.3);
    ASSERT_EQ(layers[0].steps.size(), 5u);
    EXPECT_EQ(layers[0].steps[1].values[0], 9.25);
    EXPECT_EQ(layers[0].steps[1].values[1], 1.75);
    EXPECT_EQ(layers[0].steps[2].values[1], 3);
    EXPECT_TRUE(layers[1].secondColour);
    ASSERT_EQ(layers[1].steps.size(), 2u);
    EXPECT_EQ(layers[1].steps[1].values[4], 5);
    EXPECT_EQ(readIcon("fill: M1 nonsense")[0].steps.size(), 0u);
}

using korvant::ThemeTable;

struct Shown {
    Icon icon;
    const char* name;
    korvant::Rgb ThemeTable::*colour = &ThemeTable::text;
    bool sign = false;  ///< has a sign in it, in another colour
};

const std::vector<Shown>& shownIcons() {
    static const std::vector<Shown> all = {
        {Icon::newFile, "New"},
        {Icon::open, "Open"},
        {Icon::save, "Save"},
        {Icon::undo, "Undo"},
        {Icon::redo, "Redo"},
        {Icon::run, "Run"},
        {Icon::goOn, "Continue"},
        {Icon::pause, "Pause"},
        {Icon::stop, "Stop", &ThemeTable::error},
        {Icon::stepOver, "Step over"},
        {Icon::stepInto, "Step into"},
        {Icon::stepOut, "Step out"},
        {Icon::restart, "Restart"},
        {Icon::check, "Check, all well"},
        {Icon::find, "Find"},
        {Icon::panelLeft, "Outline pane"},
        {Icon::panelBottom, "Bottom panes"},
        {Icon::panelRight, "Debug panel"},
        {Icon::help, "Help"},
        {Icon::clock, "Time used"},
        {Icon::breakpoint, "Breakpoint", &ThemeTable::breakpoint},
        {Icon::breakpointCondition, "With a condition", &ThemeTable::breakpoint, true},
        {Icon::breakpointPrints, "Only prints", &ThemeTable::breakpoint, true},
        {Icon::breakpointOff, "Switched off", &ThemeTable::breakpoint},
        {Icon::breakpointUnverified, "No code there", &ThemeTable::unverified},
        {Icon::stopArrow, "Stopped here", &ThemeTable::stopMark},
        {Icon::callerArrow, "Calling line", &ThemeTable::secondText},
        {Icon::bolt, "Exception here", &ThemeTable::error},
        {Icon::error, "Error", &ThemeTable::error, true},
        {Icon::warning, "Warning", &ThemeTable::warning, true},
        {Icon::note, "Note", &ThemeTable::accent, true},
        {Icon::function, "Function"},
        {Icon::classIcon, "Class, its value"},
        {Icon::field, "Member"},
        {Icon::enumIcon, "Enum"},
        {Icon::array, "Array"},
        {Icon::object, "Object"},
        {Icon::number, "Number"},
        {Icon::text, "Text"},
        {Icon::eye, "Watch"},
        {Icon::copy, "Copy"},
        {Icon::plus, "Add"},
        {Icon::trash, "Empty, delete"},
        {Icon::more, "More"},
        {Icon::close, "Close, hide"},
        {Icon::down, "Open (fold)"},
        {Icon::right, "Closed (fold)"},
        {Icon::up, "Previous"},
        {Icon::book, "Examples"},
        {Icon::gear, "Settings"},
    };
    return all;
}

constexpr int kRows = 17, kRow = 32, kColumn = 195, kLeft = 16, kTop = 4;
constexpr int kSmall = 16, kLarge = 24, kLargeX = 25;

wxPoint cellOf(int index) {
    return {kLeft + index / kRows * kColumn, kTop + index % kRows * kRow};
}

/// Every icon at 16 and 24 pixels, times `scale`.
wxImage sheetOf(const ThemeTable& table, int scale) {
    constexpr int kWidth = 600, kHeight = 560, kNameX = 58;
    wxBitmap sheet(kWidth * scale, kHeight * scale);
    wxMemoryDC dc(sheet);
    dc.SetBackground(wxBrush(colourOf(table.chrome)));
    dc.Clear();
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
    context->Scale(scale, scale);
    Look look;
    useSystemFonts(look);
    context->SetFont(look.plain, colourOf(table.text));
    for (int i = 0; i < static_cast<int>(shownIcons().size()); ++i) {
        const Shown& shown = shownIcons()[static_cast<std::size_t>(i)];
        const auto [x, y] = std::pair(cellOf(i).x, cellOf(i).y);
        const wxColour first = colourOf(table.*shown.colour);
        const bool light = table.editor == korvant::lightTheme().editor;
        const bool onBreakpoint = shown.colour == &ThemeTable::breakpoint;
        const wxColour second = !shown.sign
                                    ? wxNullColour
                                    : (light || onBreakpoint ? *wxWHITE : colourOf(table.editor));
        paintIcon(*context, shown.icon, x, y + (kRow - kSmall) / 2, kSmall, first, second);
        paintIcon(*context, shown.icon, x + kLargeX, y + (kRow - kLarge) / 2, kLarge, first,
                  second);
        double width = 0, height = 0;
        context->GetTextExtent(shown.name, &width, &height);
        context->DrawText(shown.name, x + kNameX, y + (kRow - height) / 2);
    }
    context->Flush();
    dc.SelectObject(wxNullBitmap);
    return sheet.ConvertToImage();
}

/// Pixels of a square that stand out from what is behind them.
int clearPixels(const wxImage& sheet, wxPoint corner, int size) {
    constexpr int kClear = 130;  // of 765
    int count = 0;
    for (int y = corner.y; y < corner.y + size; ++y)
        for (int x = corner.x; x < corner.x + size; ++x)
            count += std::abs(sheet.GetRed(x, y) - sheet.GetRed(0, 0)) +
                         std::abs(sheet.GetGreen(x, y) - sheet.GetGreen(0, 0)) +
                         std::abs(sheet.GetBlue(x, y) - sheet.GetBlue(0, 0)) >
                     kClear;
    return count;
}

TEST(EditorIcons, AllAreSeenInBothThemes) {
    const korvant::test::UiDriver toolkit;
    wxInitAllImageHandlers();  // that for pictures is not in every toolkit
    const bool kept = wxImage::FindHandler(wxBITMAP_TYPE_PNG) != nullptr;
    for (const ThemeTable* table : {&korvant::lightTheme(), &korvant::darkTheme()}) {
        const bool dark = table != &korvant::lightTheme();
        const char* folder = std::getenv("KORVANT_SCREENSHOTS");
        for (const int scale : {1, 2}) {
            const wxImage sheet = sheetOf(*table, scale);
            ASSERT_TRUE(sheet.IsOk());
            for (int i = 0; i < static_cast<int>(shownIcons().size()); ++i)
                EXPECT_GE(
                    clearPixels(sheet, cellOf(i) * scale + wxPoint(0, (kRow - kSmall) / 2 * scale),
                                kSmall * scale),
                    7 * scale)
                    << shownIcons()[static_cast<std::size_t>(i)].name << ", dark: " << dark;
            if (folder && kept)
                sheet.SaveFile(std::string(folder) + "/look-14-icons" + (dark ? "-dark" : "") +
                               (scale > 1 ? "-2x" : "") + ".png");
        }
    }
}

}  // namespace
