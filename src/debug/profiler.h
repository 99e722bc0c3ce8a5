// Where a run spends its time, by looking at its stack every millisecond.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/engine/engine_compat.h"

namespace korvant {

class Profiler {
  public:
    static constexpr std::uint32_t kEveryMs = 1;
    static constexpr std::size_t kMostFrames = 200;  ///< kept of one stack, from both its ends

    /// Notes the stack of `context`.
    void sample(asIScriptContext& context);
    /// The functions may be gone; the samples stay.
    void forgetFunctions() noexcept {
        ids_.clear();
        last_ = nullptr;
    }
    std::uint64_t samples() const noexcept { return samples_; }

    /// "main;Class::method;inner 12", one line for each stack, sorted: what flame graph tools read.
    /// "..." stands for frames in the middle of a deep one.
    std::string collapsed() const;
    /// Functions by their own share, the largest first, at most `rows`.
    std::string summary(std::size_t rows = 15) const;
    /// By function: the share of the samples, 0 to 1, in which it was on the stack.
    std::map<std::string, double> shares() const;
    void clear();

  private:
    using Id = std::uint32_t;  ///< index into known_
    struct Known {
        std::string name;
        std::uint64_t own = 0;
        std::uint64_t total = 0;
        std::uint64_t seenIn = 0;  ///< the last sample that counted it
    };
    Id idOf(asIScriptFunction& function);
    Id idOf(const std::string& name);

    std::vector<Known> known_;
    std::map<std::string, Id> byName_;
    std::unordered_map<asIScriptFunction*, Id> ids_;
    asIScriptFunction* last_ = nullptr;
    Id lastId_ = 0;
    std::map<std::vector<Id>, std::uint64_t> stacks_;  ///< outermost first
    std::uint64_t samples_ = 0;
};

}  // namespace korvant
