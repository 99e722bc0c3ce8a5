// What a host may bound. The defaults change nothing that scripts are promised.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/system/file_rules.h"

namespace korvant {

/// That many mebibytes, or a quarter of them where addresses have 32 bits: a host with two or three
/// gigabytes to itself must not lose them to one script.
constexpr std::size_t scaledMebibytes(std::size_t count, std::size_t addressBytes = sizeof(void*)) {
    return (addressBytes < 8 ? count / 4 : count) << 20;
}

inline constexpr std::size_t kStringBytes = scaledMebibytes(256);
inline constexpr std::size_t kRunBytes = scaledMebibytes(512);

struct Limits {
    std::uint32_t callDepth = 10000;                 ///< only where the host left none
    std::size_t stringBytes = kStringBytes;          ///< one string
    std::size_t runBytes = kRunBytes;                ///< all strings and objects of a run
    std::size_t scriptBytes = std::size_t{4} << 20;  ///< script text
    std::size_t scriptTokens = 1'000'000;            ///< tokens of a script text
    std::uint32_t nesting = 256;                     ///< brackets inside each other
    std::size_t nameBytes = 255;                     ///< one name
    std::uint64_t hardCeilingMs = 0;                 ///< whole run, waits included; 0: none
    std::uint32_t boxesBeforeStopButton = 20;        ///< message boxes in a run; 0: never
    bool endOfInputEndsRun = false;                  ///< reading past the end stops the run
    bool restoreLocaleAfterRun = false;              ///< undo a script's setLocale
    /// Texts for an engine that some of them kill are built in a child process first.
    bool guardBuilds = true;
    FileAccess fileAccess = FileAccess::all;
    std::string fileFolder;  ///< with FileAccess::oneFolder
};

/// For scripts that nobody has read: they compute for seconds, take megabytes and open no files.
inline Limits strictLimits() {
    Limits limits;
    limits.callDepth = 1000;
    limits.stringBytes = std::size_t{16} << 20;
    limits.runBytes = std::size_t{64} << 20;
    limits.scriptBytes = std::size_t{256} << 10;
    limits.scriptTokens = 65'536;
    limits.nesting = 64;
    limits.hardCeilingMs = 60'000;
    limits.boxesBeforeStopButton = 5;
    limits.endOfInputEndsRun = true;
    limits.restoreLocaleAfterRun = true;
    limits.fileAccess = FileAccess::none;
    return limits;
}

}  // namespace korvant
