// What names mean: the first answer after an edit, with everything that it needs made anew.
#include <chrono>

#include "host/run/script_session.h"
#include "language/rename.h"
#include "language/script_help.h"
#include "language/suggestions.h"
#include "module/families.h"
#include "ratio_table.h"

COUNTER_ROW("Names of a script", "hover after an edit, 10,000 lines, ms", 50, "name_hover", "ms");
COUNTER_ROW("Names of a script", "completion after an edit, 10,000 lines, ms", 50,
            "name_completion", "ms");
COUNTER_ROW("Names of a script", "rename with proof, 1,000 lines, ms", 150, "name_rename", "ms");

namespace {

using namespace korvant;
using Clock = std::chrono::steady_clock;

std::string scriptOf(long lines) {
    std::string text;
    for (long i = 0; i < lines / 10; ++i) {
        const std::string n = std::to_string(i);
        text += "class Well" + n +
                " { double depth = 1; double at(int i) { return depth * i; } }\n" + "double f" + n +
                "(int a, Well" + n + "@ w)\n{\n" + "    double sum = 0;\n" +
                "    for (int i = 0; i < a; i++) {\n        sum += w.at(i) * 2.5;\n    }\n" +
                "    return sum + w.depth;\n}\n";
    }
    return text + "int main() { Well7 well; return int(well.at(3)); }\n";
}

OracleEngine& engine() {
    static auto* const made = [] {
        asIScriptEngine* const fresh = asCreateScriptEngine();
        moduleSession().setServices({});
        moduleSession().configure(fresh, registrationOrder());
        return new OracleEngine(fresh);
    }();
    return *made;
}

/// The best of what `ask` takes, with the index and the compiler's part made for it.
template <class Ask>
void answer(benchmark::State& state, long lines, const Ask& ask) {
    const std::string text = scriptOf(lines);
    const std::size_t place = text.find("well.at") + 5;
    double best = 0;
    for (auto _ : state) {
        const auto began = Clock::now();
        Meanings meanings(engine(), std::make_shared<ScopeIndex>(text));
        if (!ask(meanings, place)) state.SkipWithError("no answer");
        const double ms = std::chrono::duration<double, std::milli>(Clock::now() - began).count();
        best = best == 0 ? ms : std::min(best, ms);
    }
    state.counters["ms"] = best;
}

const bool registered = [] {
    benchmark::RegisterBenchmark("name_hover", [](benchmark::State& state) {
        answer(state, 10000, [](Meanings& meanings, std::size_t place) {
            return hoverAt(meanings, Documentation(), place).has_value();
        });
    });
    benchmark::RegisterBenchmark("name_completion", [](benchmark::State& state) {
        answer(state, 10000, [](Meanings& meanings, std::size_t place) {
            return !suggestionsAt(meanings, Documentation(), place).empty();
        });
    });
    benchmark::RegisterBenchmark("name_rename", [](benchmark::State& state) {
        answer(state, 1000, [](Meanings& meanings, std::size_t place) {
            return renameAt(engine(), meanings, place, "fresh").refusal.empty();
        });
    });
    return true;
}();

}  // namespace
