#include "object/model/charged_bytes.h"

#include <new>

#include "host/engine/memory_budget.h"

namespace korvant {

void ChargedBytes::add(std::size_t bytes) {
    if (bytes != 0 && !memoryBudget.charge(bytes)) throw std::bad_alloc();
    bytes_ += bytes;
}

void ChargedBytes::drop(std::size_t bytes) noexcept {
    if (bytes > bytes_) bytes = bytes_;
    memoryBudget.release(bytes);
    bytes_ -= bytes;
}

}  // namespace korvant
