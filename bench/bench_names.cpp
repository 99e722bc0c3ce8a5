// What names mean: the answer after an edit inside of a body, index and all, and the very first
// one.
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
COUNTER_ROW("Names of a script", "definition after an edit, 10,000 lines, ms", 50,
            "name_definition", "ms");
COUNTER_ROW("Names of a script", "a type that the compiler tells, after an edit, ms", 50,
            "name_type", "ms");
RATIO_ROW("Names of a script", "its first answer about a text / plain build, 10,000 lines", 1,
          "name_first", "name_build");
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
    return text + "int main() { Well7 well; auto found = well.at(3) * 2; return int(found); }\n";
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

const Documentation& library() {
    static const Documentation made(allFamilies());
    return made;
}

/// The best of what `ask` takes about the text and about the same with a body changed, in turns.
template <class Ask>
void answer(benchmark::State& state, long lines, std::string_view where, const Ask& ask) {
    const std::string text = scriptOf(lines);
    std::string edited = text;
    edited.replace(edited.find("* 2.5", text.size() / 2), 5, "* 3 - 1");
    // What the compiler knows of the text before the edit.
    Meanings(engine(), std::make_shared<ScopeIndex>(text)).oracle().module();
    double best = 0;
    bool again = false;
    for (auto _ : state) {
        again = !again;
        const std::string& now = again ? edited : text;
        const auto began = Clock::now();
        Meanings meanings(engine(), std::make_shared<ScopeIndex>(now));
        if (!ask(meanings, now.find(where) + where.size() - 1)) state.SkipWithError("no answer");
        const double ms = std::chrono::duration<double, std::milli>(Clock::now() - began).count();
        best = best == 0 ? ms : std::min(best, ms);
    }
    state.counters["ms"] = best;
}

bool tellsType(Meanings& meanings, std::size_t place) {
    const auto hover = hoverAt(meanings, library(), place);
    return hover && hover->declaration.starts_with("double found");
}

void first(benchmark::State& state) {
    const std::string text = scriptOf(10000);
    for (auto _ : state) {
        engine().rest();
        Meanings meanings(engine(), std::make_shared<ScopeIndex>(text));
        if (!tellsType(meanings, text.find("found ="))) state.SkipWithError("no answer");
    }
}

void build(benchmark::State& state) {
    const std::string text = scriptOf(10000);
    for (auto _ : state) {
        engine().rest();
        asIScriptModule* const module = engine().build("plain", text);
        if (module == nullptr) return state.SkipWithError("does not build");
        module->Discard();
    }
}

const bool registered = [] {
    benchmark::RegisterBenchmark("name_hover", [](benchmark::State& state) {
        answer(state, 10000, "well.a", [](Meanings& meanings, std::size_t place) {
            return hoverAt(meanings, library(), place).has_value();
        });
    });
    benchmark::RegisterBenchmark("name_completion", [](benchmark::State& state) {
        answer(state, 10000, "well.a", [](Meanings& meanings, std::size_t place) {
            return !suggestionsAt(meanings, library(), place).empty();
        });
    });
    benchmark::RegisterBenchmark("name_definition", [](benchmark::State& state) {
        answer(state, 10000, "well.a", [](Meanings& meanings, std::size_t place) {
            const NameUse* const use = meanings.index().useAt(place);
            return use != nullptr && !meanings.of(*use).declarations.empty();
        });
    });
    benchmark::RegisterBenchmark(
        "name_type", [](benchmark::State& state) { answer(state, 10000, "auto f", tellsType); });
    benchmark::RegisterBenchmark("name_first", first)->UseRealTime();
    benchmark::RegisterBenchmark("name_build", build)->UseRealTime();
    benchmark::RegisterBenchmark("name_rename", [](benchmark::State& state) {
        answer(state, 1000, "well.a", [](Meanings& meanings, std::size_t place) {
            return renameAt(engine(), meanings, place, "fresh").refusal.empty();
        });
    });
    return true;
}();

}  // namespace
