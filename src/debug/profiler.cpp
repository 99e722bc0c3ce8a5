#include "debug/profiler.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

#include "debug/frames.h"

namespace korvant {

Profiler::Id Profiler::idOf(const std::string& name) {
    const auto [known, added] = byName_.try_emplace(name, static_cast<Id>(known_.size()));
    if (added) known_.push_back({name, 0, 0, 0});
    return known->second;
}

/// A function's address stays good while its module lives; a run has one.
Profiler::Id Profiler::idOf(asIScriptFunction& function) {
    if (&function == last_) return lastId_;
    auto known = ids_.find(&function);
    if (known == ids_.end()) {
        std::string name = qualifiedName(function);
        // The signs that part frames and counts in the collapsed form.
        std::replace(name.begin(), name.end(), ';', ':');
        std::replace(name.begin(), name.end(), ' ', '_');
        known = ids_.emplace(&function, idOf(name)).first;
    }
    last_ = &function;
    lastId_ = known->second;
    return lastId_;
}

void Profiler::sample(asIScriptContext& context) {
    const asUINT depth = context.GetCallstackSize();
    std::vector<Id> stack;
    ++samples_;
    for (asUINT level = depth; level-- > 0;) {
        asIScriptFunction* const function = context.GetFunction(level);
        if (function == nullptr) continue;
        const Id id = idOf(*function);
        Known& known = known_[id];
        // A function that calls itself counts once.
        if (known.seenIn != samples_) ++known.total;
        known.seenIn = samples_;
        if (level == 0) ++known.own;
        if (depth <= kMostFrames || level < kMostFrames / 2 || stack.size() < kMostFrames / 2)
            stack.push_back(id);
        else if (level == kMostFrames / 2)
            stack.push_back(idOf(std::string("...")));
    }
    if (stack.empty())
        --samples_;
    else
        ++stacks_[stack];
}

std::string Profiler::collapsed() const {
    std::map<std::string, std::uint64_t> lines;
    for (const auto& [stack, count] : stacks_) {
        std::string line;
        for (const Id id : stack) line += (line.empty() ? "" : ";") + known_[id].name;
        lines[line] += count;
    }
    std::string text;
    for (const auto& [line, count] : lines) text += line + " " + std::to_string(count) + "\n";
    return text;
}

std::string Profiler::summary(std::size_t rows) const {
    std::vector<const Known*> order;
    for (const Known& known : known_)
        if (known.total > 0) order.push_back(&known);
    std::sort(order.begin(), order.end(), [](const Known* a, const Known* b) {
        return a->own != b->own ? a->own > b->own : a->name < b->name;
    });
    if (order.size() > rows) order.resize(rows);
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << samples_ << " samples, one every " << kEveryMs << " ms\n   own  total  function\n";
    const auto percent = [this](std::uint64_t count) {
        return samples_ == 0 ? 0.0
                             : 100.0 * static_cast<double>(count) / static_cast<double>(samples_);
    };
    text << std::fixed << std::setprecision(1);
    for (const Known* known : order)
        text << std::setw(5) << percent(known->own) << "% " << std::setw(5) << percent(known->total)
             << "% " << known->name << "\n";
    return text.str();
}

std::map<std::string, double> Profiler::shares() const {
    std::map<std::string, double> shares;
    for (const Known& known : known_)
        if (known.total > 0)
            shares[known.name] = static_cast<double>(known.total) / static_cast<double>(samples_);
    return shares;
}

void Profiler::clear() {
    stacks_.clear();
    known_.clear();
    byName_.clear();
    forgetFunctions();
    samples_ = 0;
}

}  // namespace korvant
