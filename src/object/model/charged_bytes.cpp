#include "object/model/charged_bytes.h"

#include <new>

#include "host/engine/memory_budget.h"

namespace korvant {

void ChargedBytes::add(std::size_t bytes) {
    if (bytes != 0 && memoryBudget.scriptRuns) {
        if (!memoryBudget.charge(bytes)) throw std::bad_alloc();
        charged_ += bytes;
    }
    bytes_ += bytes;
}

void ChargedBytes::drop(std::size_t bytes) noexcept {
    if (bytes > bytes_) bytes = bytes_;
    bytes_ -= bytes;
    if (charged_ <= bytes_) return;
    memoryBudget.release(charged_ - bytes_);
    charged_ = bytes_;
}

}  // namespace korvant
