#include <pthread.h>

#include "base/system/fork_notice.h"

namespace korvant {

void onFork(void (*inChild)()) noexcept {
    pthread_atfork(nullptr, nullptr, inChild);
}

}  // namespace korvant
