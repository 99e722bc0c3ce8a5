#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "host/scan/scan_checks.h"

namespace korvant {

namespace {

/// Calls that one call may be written out to, and all calls of a text together.
constexpr std::uint64_t kMostCalls = 10000;
constexpr std::uint64_t kMostInAll = 1'000'000;
constexpr char kTooOften[] = "The default arguments call each other too often";

/// Counts for each function name how many calls stand in its default arguments, those of the
/// functions called there included. Functions of one name count as one.
class DefaultArguments {
  public:
    DefaultArguments(const TokenList& tokens, const Outline& outline) : tokens_(tokens) {
        for (const FunctionOutline& function : outline.functions)
            if (hasDefault(function.parameters)) collect(function);
    }

    ScanResult run() {
        if (functions_.empty()) return std::nullopt;
        for (auto& [name, function] : functions_)
            if (calls(name) > kMostCalls) return ScanFinding{function.token, kTooOften};
        std::uint64_t all = 0;
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (!tokens_.isName(i)) continue;
            const auto found = functions_.find(tokens_.text(i));
            if (found != functions_.end()) all += found->second.calls;
            if (all > kMostInAll) return ScanFinding{i, kTooOften};
        }
        return std::nullopt;
    }

  private:
    struct Function {
        std::size_t token = 0;
        std::vector<std::string_view> called;
        enum class State { unknown, counting, known } state = State::unknown;
        std::uint64_t calls = 0;
    };

    bool hasDefault(TokenRange parameters) const {
        for (std::size_t i = parameters.begin; i < parameters.end; ++i)
            if (tokens_.isSymbol(i, kAssign)) return true;
        return false;
    }

    /// Every name counts that may be a call: a constructor needs no bracket of its own.
    void collect(const FunctionOutline& outline) {
        Function& function = functions_[tokens_.text(outline.name)];
        function.token = outline.name;
        bool value = false;
        for (std::size_t i = outline.parameters.begin; i < outline.parameters.end; ++i) {
            value = value || tokens_.isSymbol(i, kAssign);
            if (value && tokens_.isName(i)) function.called.push_back(tokens_.text(i));
        }
    }

    /// What is called without end counts as too many.
    std::uint64_t calls(std::string_view first) {
        std::vector<std::string_view> open{first};
        while (!open.empty()) {
            const auto found = functions_.find(open.back());
            if (found == functions_.end() || found->second.state == Function::State::known) {
                open.pop_back();
            } else if (found->second.state == Function::State::unknown) {
                found->second.state = Function::State::counting;
                for (const std::string_view name : found->second.called)
                    if (isCounting(name)) return kMostCalls + 1;
                open.insert(open.end(), found->second.called.begin(), found->second.called.end());
            } else {
                finish(found->second);
                open.pop_back();
            }
        }
        return functions_[first].calls;
    }

    bool isCounting(std::string_view name) const {
        const auto found = functions_.find(name);
        return found != functions_.end() && found->second.state == Function::State::counting;
    }

    void finish(Function& function) {
        for (const std::string_view name : function.called) {
            const auto found = functions_.find(name);
            const std::uint64_t inner = found == functions_.end() ? 0 : 1 + found->second.calls;
            function.calls = std::min(function.calls + inner, kMostCalls + 1);
        }
        function.state = Function::State::known;
    }

    const TokenList& tokens_;
    std::unordered_map<std::string_view, Function> functions_;
};

}  // namespace

ScanResult checkDefaultArguments(const TokenList& tokens, const Outline& outline) {
    return DefaultArguments(tokens, outline).run();
}

}  // namespace korvant
