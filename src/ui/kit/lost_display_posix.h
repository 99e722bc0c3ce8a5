// Display connections that break off, or report errors.
#pragma once

struct _XDisplay;

namespace korvant::ui::native {

/// Gives the library behind a broken connection a place for the requests that the toolkit still
/// makes while its windows end: without one the next request would read a null pointer. What is
/// written there goes nowhere. To be called from the handler of the connection's failure.
void makeRequestsHarmless(_XDisplay* display);

/// Errors that the display reports on a connection of the module's own end nothing: without this
/// they reach the process's handler, which ends the host. The host's handler stays as it is.
void ignoreErrors(_XDisplay* display);

}  // namespace korvant::ui::native
