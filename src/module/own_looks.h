// How the system draws the controls of the module's windows.
#pragma once

namespace korvant {

/// Brackets everything that may show a window; nests. Windows that are made in between are drawn as
/// the module's manifest says, whatever the host's says; the host's own are left as they are.
void useOwnLooks(bool enter) noexcept;

}  // namespace korvant
