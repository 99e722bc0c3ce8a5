// The small window with a script's progress, which lives on a thread of its own.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/services/frontend.h"

namespace korvant::ui {

/// How the progress window looks. Colours are 0x00RRGGBB.
struct ProgressStyle {
    std::uint32_t background = 0xF6F5F4;
    std::uint32_t text = 0x2E3436;
    std::string fontFamily = "Sans";
    double fontPoints = 10;
    int scale = 1;  ///< pixels of the screen for one of the layout
};

/// Called on the script's thread once the toolkit knows the desktop's looks; windows that are made
/// from then on follow it.
void setProgressStyle(const ProgressStyle& style);
/// What was set last, else what the user's settings say. Safe from any thread.
ProgressStyle progressStyle();
/// What the system says by itself; one implementation for each platform.
ProgressStyle guessedProgressStyle();

/// A window that is not shown yet; null without a display. It belongs to the thread that makes it
/// and to a display connection of its own, so it paints and listens while the script's thread is
/// busy, and nothing of the host gets a turn because of it.
std::unique_ptr<ProgressWindow> makeProgressWindow();

}  // namespace korvant::ui
