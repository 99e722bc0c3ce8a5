// Where a run spends its time, by looking at its stack every millisecond.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "host/engine/engine_compat.h"

namespace korvant {

class Profiler {
  public:
    static constexpr std::uint32_t kEveryMs = 1;

    /// Notes the stack of `context`.
    void sample(asIScriptContext& context);
    /// The functions may be gone; the samples stay.
    void forgetFunctions() { names_.clear(); }
    std::uint64_t samples() const noexcept { return samples_; }

    /// "main;Class::method;inner 12", one line for each stack, sorted: what flame graph tools read.
    std::string collapsed() const;
    /// Functions by their own share, the largest first, at most `rows`.
    std::string summary(std::size_t rows = 15) const;
    void clear();

  private:
    const std::string& nameOf(asIScriptFunction& function);

    std::map<std::string, std::uint64_t> stacks_;
    std::map<std::string, std::uint64_t> own_;
    std::map<std::string, std::uint64_t> total_;
    std::map<asIScriptFunction*, std::string> names_;
    std::uint64_t samples_ = 0;
};

}  // namespace korvant
