#include "debug/profiler.h"

#include <algorithm>
#include <iomanip>
#include <set>
#include <sstream>

#include "debug/frames.h"

namespace korvant {

/// A function's name stays good while its module lives; a run has one.
const std::string& Profiler::nameOf(asIScriptFunction& function) {
    std::string& name = names_[&function];
    if (!name.empty()) return name;
    name = qualifiedName(function);
    // The signs that part frames and counts in the collapsed form.
    std::replace(name.begin(), name.end(), ';', ':');
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

void Profiler::sample(asIScriptContext& context) {
    std::string stack;
    std::set<std::string_view> seen;
    for (asUINT level = context.GetCallstackSize(); level-- > 0;) {
        asIScriptFunction* const function = context.GetFunction(level);
        if (function == nullptr) continue;
        const std::string& name = nameOf(*function);
        if (!stack.empty()) stack += ';';
        stack += name;
        // A function that calls itself counts once.
        if (seen.insert(name).second) ++total_[name];
        if (level == 0) ++own_[name];
    }
    if (stack.empty()) return;
    ++stacks_[stack];
    ++samples_;
}

std::string Profiler::collapsed() const {
    std::string text;
    for (const auto& [stack, count] : stacks_) text += stack + " " + std::to_string(count) + "\n";
    return text;
}

std::string Profiler::summary(std::size_t rows) const {
    std::vector<std::pair<std::string, std::uint64_t>> order;
    for (const auto& [name, count] : total_) {
        const auto own = own_.find(name);
        order.emplace_back(name, own == own_.end() ? 0 : own->second);
    }
    std::stable_sort(order.begin(), order.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    if (order.size() > rows) order.resize(rows);
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << samples_ << " samples, one every " << kEveryMs << " ms\n   own  total  function\n";
    const auto percent = [this](std::uint64_t count) {
        return samples_ == 0 ? 0.0
                             : 100.0 * static_cast<double>(count) / static_cast<double>(samples_);
    };
    text << std::fixed << std::setprecision(1);
    for (const auto& [name, own] : order)
        text << std::setw(5) << percent(own) << "% " << std::setw(5) << percent(total_.at(name))
             << "% " << name << "\n";
    return text.str();
}

void Profiler::clear() {
    stacks_.clear();
    own_.clear();
    total_.clear();
    names_.clear();
    samples_ = 0;
}

}  // namespace korvant
