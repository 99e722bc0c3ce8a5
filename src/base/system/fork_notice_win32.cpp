#include "base/system/fork_notice.h"

namespace korvant {

void onFork(void (*)()) noexcept {}

}  // namespace korvant
