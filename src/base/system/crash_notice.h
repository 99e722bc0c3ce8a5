// The last word of a process that crashes while the editor is open.
#pragma once

#include <string>

namespace korvant {

/// The newest recovery copy on disk; empty when there is none. Cheap; never throws.
void setCrashNoticePath(const std::string& path) noexcept;

/// While one lives, a crash of the process says on standard error where the unsaved text is, and
/// the process then ends as it would have without. A crash handler of the host's own is left alone.
/// To be made and destroyed on one thread, whose exhausted stack counts as a crash too.
class CrashNotice {
  public:
    CrashNotice();
    ~CrashNotice();
    CrashNotice(const CrashNotice&) = delete;
    CrashNotice& operator=(const CrashNotice&) = delete;
};

}  // namespace korvant
