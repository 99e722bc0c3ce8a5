// A display connection that has broken off.
#pragma once

struct _XDisplay;

namespace korvant::ui::native {

/// Gives the library behind a broken connection a place for the requests that the toolkit still
/// makes while its windows end: without one the next request would read a null pointer. What is
/// written there goes nowhere. To be called from the handler of the connection's failure.
void makeRequestsHarmless(_XDisplay* display);

}  // namespace korvant::ui::native
