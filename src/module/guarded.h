// The border that no C++ exception crosses.
#pragma once

namespace korvant {

/// What `call` returns; `failed` when it throws.
template <class Result, class Call>
Result guarded(Result failed, Call call) noexcept {
    try {
        return call();
    } catch (...) {
        return failed;
    }
}

}  // namespace korvant
