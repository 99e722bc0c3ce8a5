// The icons of the window are read from their texts.
#include <gtest/gtest.h>

#include "ui/kit/icon_paths.h"

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

}  // namespace
