// Property objects of 10,000 properties and 10,000 rules, against the plainest form of the same
// and against a pass with another evaluator.
#include <muParser.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "korvantide/script_object.h"
#include "object/form/edit_session.h"
#include "object/form/rule_book.h"
#include "object/script/object_access.h"
#include "ratio_table.h"

RATIO_ROW("Property objects", "add / parallel sequences and std::map for the names", 0.36,
          "object_add_ours", "object_add_plain");
RATIO_ROW("Property objects", "read by name / std::unordered_map", 0.23, "object_read_ours",
          "object_read_plain", "two lines of the second-level cache for each name, in no order");
RATIO_ROW("Property objects", "verdict after one edit: tracked / full pass", 0.002,
          "object_rules_tracked", "object_rules_full");
RATIO_ROW("Property objects", "full pass / muParser's pass over the same rules", 0.20,
          "object_rules_full", "object_rules_muparser");
RATIO_ROW("Property objects", "100,000 added / 10,000 added (10 is linear)", 14, "object_add_many",
          "object_add_ours", "100,000 do not fit into the second-level cache, 10,000 do");
RATIO_ROW("Property objects", "opening a form with its rules read / adding its properties", 0,
          "object_form_open", "object_add_ours");
RATIO_ROW("Property objects", "a commit in a form, with what it draws again / opening the form", 0,
          "object_form_commit", "object_form_open");

namespace {

constexpr int kCount = 10000;

std::vector<std::string> namesOf(int count) {
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i) names.push_back("property" + std::to_string(i));
    return names;
}

void add(ScriptObject& object, std::vector<std::string>& names) {
    std::string label = "Flow of pump";
    std::string unit = "m3/h";
    double value = 1.5;
    bool flag = true;
    for (std::string& name : names) object._addDoubleProperty(name, label, value, unit, flag);
}

void addOurs(benchmark::State& state, int count) {
    std::vector<std::string> names = namesOf(count);
    for (auto _ : state) {
        ScriptObject object;
        add(object, names);
        benchmark::DoNotOptimize(object.getPropertiesCount());
    }
}

/// One sequence for each thing that a property has, and a map from names to places.
struct PlainObject {
    std::map<std::string, std::int32_t> index;
    std::vector<std::string> names, labels, units, texts;
    std::vector<bool> flags, booleans;
    std::vector<void*> listeners;
    std::vector<char> letters;
    std::vector<std::int32_t> integers;
    std::vector<double> reals;

    bool add(const std::string& name, const std::string& label, double value,
             const std::string& unit, bool flag) {
        if (index.find(name) != index.end()) return false;
        const std::size_t at = names.size();
        index[name] = static_cast<std::int32_t>(at);
        names.push_back(name);
        labels.push_back(label);
        flags.push_back(flag);
        listeners.push_back(nullptr);
        units.emplace_back();
        letters.push_back('?');
        texts.emplace_back();
        integers.push_back(0);
        reals.push_back(0.0);
        booleans.push_back(false);
        reals[at] = value;
        letters[at] = 'd';
        units[at] = unit;
        return true;
    }
};

void addPlain(benchmark::State& state) {
    const std::vector<std::string> names = namesOf(kCount);
    const std::string label = "Flow of pump";
    const std::string unit = "m3/h";
    for (auto _ : state) {
        PlainObject object;
        for (const std::string& name : names) object.add(name, label, 1.5, unit, true);
        benchmark::DoNotOptimize(object.names.size());
    }
}

/// The names in an order that no cache knows beforehand.
std::vector<std::string> shuffledNames() {
    std::vector<std::string> names = namesOf(kCount);
    std::shuffle(names.begin(), names.end(), std::mt19937(5));
    return names;
}

void readOurs(benchmark::State& state) {
    std::vector<std::string> names = namesOf(kCount);
    ScriptObject object;
    add(object, names);
    names = shuffledNames();
    for (auto _ : state) {
        double sum = 0.0;
        double value = 0.0;
        for (std::string& name : names)
            if (object._getDoubleProperty(name, value)) sum += value;
        benchmark::DoNotOptimize(sum);
    }
}

void readPlain(benchmark::State& state) {
    std::unordered_map<std::string, std::int32_t> index;
    std::vector<double> reals(kCount, 1.5);
    for (const std::string& name : namesOf(kCount))
        index.emplace(name, static_cast<std::int32_t>(index.size()));
    const std::vector<std::string> names = shuffledNames();
    for (auto _ : state) {
        double sum = 0.0;
        for (const std::string& name : names) {
            const auto found = index.find(name);
            if (found != index.end()) sum += reals[static_cast<std::size_t>(found->second)];
        }
        benchmark::DoNotOptimize(sum);
    }
}

/// Four kinds of conditions, each over the property itself and its neighbours.
std::string ruleOf(int index, const char* separator) {
    const auto name = [](int i) { return "property" + std::to_string(i % kCount); };
    switch (index % 4) {
        case 0:
            return name(index) + ">0";
        case 1:
            return name(index) + "<" + name(index + 1) + "*2";
        case 2:
            return "min(" + name(index) + separator + name(index + 1) + ")>=1&&" + name(index) +
                   "<100";
        default:
            return name(index) + "+" + name(index + 2) + "<=50||" + name(index + 1) + ">7";
    }
}

struct Form {
    Form() {
        std::vector<std::string> names = namesOf(kCount);
        add(object, names);
        for (int i = 0; i < kCount; ++i)
            object.addErrorConstraint(names[static_cast<std::size_t>(i)], ruleOf(i, ";"),
                                      "The value does not fit");
    }
    ScriptObject object;
};

struct RunningForm : Form {
    RunningForm()
        : values(korvant::ObjectAccess::model(object)),
          book(korvant::ObjectAccess::model(object), values, 0) {
        book.pass(korvant::RuleBook::kNoRow);
    }
    korvant::WorkingCopy values;
    korvant::RuleBook book;
};

void rulesTracked(benchmark::State& state) {
    RunningForm form;
    double value = 1.5;
    std::int32_t row = 0;
    for (auto _ : state) {
        value = value == 1.5 ? 2.5 : 1.5;
        row = (row + 7919) % kCount;
        form.values.setReal(row, value);
        form.book.pass(row);
        benchmark::DoNotOptimize(form.book.failingErrors());
        form.book.clearTouched();
    }
}

void rulesFull(benchmark::State& state) {
    RunningForm form;
    double value = 1.5;
    for (auto _ : state) {
        value = value == 1.5 ? 2.5 : 1.5;
        form.values.setReal(77, value);
        form.book.markAll();
        form.book.pass(77);
        benchmark::DoNotOptimize(form.book.failingErrors());
        form.book.clearTouched();
    }
}

/// One parser a rule, each knowing the names that it reads.
struct MuParserForm {
    MuParserForm() : values(kCount, 1.5) {
        const std::vector<std::string> names = namesOf(kCount);
        for (int i = 0; i < kCount; ++i) {
            auto parser = std::make_unique<mu::Parser>();
            for (int k = 0; k < 3; ++k) {
                const auto at = static_cast<std::size_t>((i + k) % kCount);
                parser->DefineVar(names[at], &values[at]);
            }
            parser->SetExpr(ruleOf(i, ","));
            parser->Eval();
            parsers.push_back(std::move(parser));
        }
    }
    std::vector<double> values;
    std::vector<std::unique_ptr<mu::Parser>> parsers;
};

void rulesMuParser(benchmark::State& state) {
    static MuParserForm* const form = new MuParserForm;
    for (auto _ : state) {
        int failing = 0;
        form->values[77] = form->values[77] == 1.5 ? 2.5 : 1.5;
        for (const auto& parser : form->parsers)
            if (parser->Eval() == 0.0) ++failing;
        benchmark::DoNotOptimize(failing);
    }
}

void formOpen(benchmark::State& state) {
    const Form form;
    for (auto _ : state) {
        korvant::EditSession session(korvant::ObjectAccess::model(form.object));
        benchmark::DoNotOptimize(session.rowCount());
    }
}

void formCommit(benchmark::State& state) {
    const Form form;
    korvant::EditSession session(korvant::ObjectAccess::model(form.object));
    int turn = 0;
    for (auto _ : state) {
        session.commitText((turn * 7919) % kCount, (turn & 1) != 0 ? "2.5" : "1.75");
        benchmark::DoNotOptimize(session.takeChanges());
        ++turn;
    }
}

[[maybe_unused]] const bool registered = [] {
    benchmark::RegisterBenchmark("object_add_ours", addOurs, kCount);
    benchmark::RegisterBenchmark("object_add_many", addOurs, kCount * 10);
    benchmark::RegisterBenchmark("object_add_plain", addPlain);
    benchmark::RegisterBenchmark("object_read_ours", readOurs);
    benchmark::RegisterBenchmark("object_read_plain", readPlain);
    benchmark::RegisterBenchmark("object_rules_tracked", rulesTracked);
    benchmark::RegisterBenchmark("object_rules_full", rulesFull);
    benchmark::RegisterBenchmark("object_rules_muparser", rulesMuParser);
    benchmark::RegisterBenchmark("object_form_open", formOpen);
    benchmark::RegisterBenchmark("object_form_commit", formCommit);
    return true;
}();

}  // namespace
