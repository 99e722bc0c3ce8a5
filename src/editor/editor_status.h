// What the editor's window tells of the editor: read afresh whenever something may have changed.
#pragma once

#include <cstdint>
#include <string>

namespace korvant {

struct EditorStatus {
    enum class Run { idle, running, stopped, exception };

    Run run = Run::idle;
    std::int32_t line = 1, column = 1;  ///< of the caret; the column in characters
    std::int32_t stoppedLine = 0;
    bool stopInView = false;  ///< that line is one of the text in view
    std::string path;         ///< of the text in view; empty for one without a file
    std::string encoding;     ///< its name
    bool western = false;     ///< a character is one byte of the file
    bool modified = false;
    bool canUndo = false, canRedo = false;
    int zoom = 100;  ///< in percent of the usual size
    std::uint32_t runMilliseconds =
        0;  ///< of the time allowed; without a limit since the run began
    std::uint32_t limitMilliseconds = 0;  ///< 0: none
    bool operator==(const EditorStatus&) const = default;
};

}  // namespace korvant
