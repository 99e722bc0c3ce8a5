#include "debug/breakpoint_book.h"

#include <algorithm>
#include <charconv>

#include "debug/evaluation_text.h"

namespace korvant {

namespace {

std::string_view withoutBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const auto begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

bool sameState(const Breakpoint& left, const Breakpoint& right) {
    return left.verified == right.verified && left.resolved == right.resolved &&
           left.reason == right.reason;
}

}  // namespace

bool HitCondition::read(std::string_view text, HitCondition& condition) {
    struct Sign {
        std::string_view text;
        Kind kind;
    };
    static constexpr Sign kSigns[] = {
        {"==", Kind::equal}, {">=", Kind::atLeast}, {"<=", Kind::atMost}, {"=", Kind::equal},
        {">", Kind::more},   {"<", Kind::less},     {"%", Kind::every}};
    condition = {};
    text = withoutBlanks(text);
    if (text.empty()) return true;
    // A plain number: the first stop is that hit.
    Kind kind = Kind::atLeast;
    for (const Sign& sign : kSigns)
        if (text.starts_with(sign.text)) {
            kind = sign.kind;
            text = withoutBlanks(text.substr(sign.text.size()));
            break;
        }
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, condition.number_);
    if (error != std::errc() || stopped != end) return false;
    if (kind == Kind::every && condition.number_ == 0) return false;
    condition.kind_ = kind;
    return true;
}

bool HitCondition::holds(std::uint32_t hits) const {
    switch (kind_) {
        case Kind::equal:
            return hits == number_;
        case Kind::atLeast:
            return hits >= number_;
        case Kind::more:
            return hits > number_;
        case Kind::atMost:
            return hits <= number_;
        case Kind::less:
            return hits < number_;
        case Kind::every:
            return hits % number_ == 0;
        case Kind::none:
            break;
    }
    return true;
}

Breakpoint BreakpointBook::make(BreakpointWish wish) {
    Breakpoint made;
    made.id = ++lastId_;
    made.wish = std::move(wish);
    resolveOne(made);
    return made;
}

/// One that was there with the same place and name keeps its number and its hits.
std::vector<int> BreakpointBook::replace(std::vector<Breakpoint> old,
                                         std::vector<BreakpointWish> wishes) {
    std::vector<int> ids;
    for (BreakpointWish& wish : wishes) {
        const auto same = std::find_if(old.begin(), old.end(), [&](const Breakpoint& b) {
            return b.wish.place.line == wish.place.line && b.wish.name == wish.name &&
                   b.wish.calls == wish.calls;
        });
        if (same != old.end()) {
            same->wish = std::move(wish);
            resolveOne(*same);
            ids.push_back(same->id);
            breakpoints_.push_back(std::move(*same));
            old.erase(same);
        } else {
            breakpoints_.push_back(make(std::move(wish)));
            ids.push_back(breakpoints_.back().id);
        }
    }
    return ids;
}

std::vector<int> BreakpointBook::setLines(const std::string& source,
                                          std::vector<BreakpointWish> wishes) {
    for (BreakpointWish& wish : wishes) {
        wish.kind = BreakpointKind::line;
        wish.place.source = source;
    }
    return replace(take([&](const Breakpoint& b) {
                       return b.wish.kind == BreakpointKind::line && b.wish.place.source == source;
                   }),
                   std::move(wishes));
}

std::vector<int> BreakpointBook::setOthers(BreakpointKind kind,
                                           std::vector<BreakpointWish> wishes) {
    for (BreakpointWish& wish : wishes) wish.kind = kind;
    return replace(take([kind](const Breakpoint& b) { return b.wish.kind == kind; }),
                   std::move(wishes));
}

template <class Which>
std::vector<Breakpoint> BreakpointBook::take(Which which) {
    std::vector<Breakpoint> taken;
    for (Breakpoint& breakpoint : breakpoints_)
        if (which(breakpoint)) taken.push_back(std::move(breakpoint));
    // What was moved from still has its number.
    std::erase_if(breakpoints_, [&](const Breakpoint& b) {
        return std::any_of(taken.begin(), taken.end(),
                           [&](const Breakpoint& t) { return t.id == b.id; });
    });
    return taken;
}

int BreakpointBook::add(BreakpointWish wish) {
    breakpoints_.push_back(make(std::move(wish)));
    return breakpoints_.back().id;
}

bool BreakpointBook::remove(int id) {
    return std::erase_if(breakpoints_, [id](const Breakpoint& b) { return b.id == id; }) > 0;
}

bool BreakpointBook::change(int id, BreakpointWish wish) {
    Breakpoint* const found = find(id);
    if (found == nullptr) return false;
    found->wish = std::move(wish);
    resolveOne(*found);
    return true;
}

void BreakpointBook::clear() {
    breakpoints_.clear();
}

Breakpoint* BreakpointBook::find(int id) {
    const auto found = std::find_if(breakpoints_.begin(), breakpoints_.end(),
                                    [id](const Breakpoint& b) { return b.id == id; });
    return found == breakpoints_.end() ? nullptr : &*found;
}

const Breakpoint* BreakpointBook::find(int id) const {
    return const_cast<BreakpointBook*>(this)->find(id);
}

std::vector<int> BreakpointBook::resolve(std::shared_ptr<const CodeLines> code) {
    code_ = std::move(code);
    std::vector<int> changed;
    for (Breakpoint& breakpoint : breakpoints_)
        if (resolveOne(breakpoint)) changed.push_back(breakpoint.id);
    return changed;
}

/// True when its state has changed.
bool BreakpointBook::resolveOne(Breakpoint& breakpoint) const {
    const Breakpoint before = breakpoint;
    breakpoint.verified = false;
    breakpoint.resolved = {};
    breakpoint.reason.clear();
    HitCondition hits;
    if (!HitCondition::read(breakpoint.wish.hitCondition, hits))
        breakpoint.reason = "\"" + breakpoint.wish.hitCondition + "\" is no hit condition.";
    else if (breakpoint.wish.kind == BreakpointKind::data && changesSomething(breakpoint.wish.name))
        breakpoint.reason = "What is watched must not change anything.";
    else if (breakpoint.wish.kind == BreakpointKind::data)
        breakpoint.verified = true;
    else if (code_ == nullptr)
        breakpoint.reason = "The script is not built yet.";
    else if (breakpoint.wish.kind == BreakpointKind::function)
        resolveFunction(breakpoint);
    else
        resolveLine(breakpoint);
    return !sameState(before, breakpoint);
}

void BreakpointBook::resolveLine(Breakpoint& breakpoint) const {
    const ScriptPlace& place = breakpoint.wish.place;
    CodeLines::Resolved found = code_->resolve(place.source, place.line);
    breakpoint.verified = found.verified;
    breakpoint.reason = std::move(found.reason);
    if (found.verified) breakpoint.resolved = {place.source, found.line, 0};
}

void BreakpointBook::resolveFunction(Breakpoint& breakpoint) const {
    const auto functions = code_->find(breakpoint.wish.name);
    breakpoint.verified = !functions.empty();
    if (functions.empty())
        breakpoint.reason = "There is no function \"" + breakpoint.wish.name + "\" in the script.";
    else
        breakpoint.resolved = {functions.front()->source, functions.front()->lines.front(), 0};
}

void BreakpointBook::beginRun() {
    for (Breakpoint& breakpoint : breakpoints_) {
        breakpoint.hits = 0;
        breakpoint.hasLastValue = false;
        breakpoint.lastValue.clear();
    }
}

std::vector<std::int32_t> BreakpointBook::lines() const {
    std::vector<std::int32_t> lines;
    for (const Breakpoint& b : breakpoints_) {
        if (!b.wish.enabled || !b.verified) continue;
        if (b.wish.kind == BreakpointKind::line) lines.push_back(b.resolved.line);
        if (b.wish.kind == BreakpointKind::function)
            for (const CodeLines::Function* function : code_->find(b.wish.name))
                lines.insert(lines.end(), function->lines.begin(), function->lines.end());
    }
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
}

bool BreakpointBook::watchesData() const {
    return std::any_of(breakpoints_.begin(), breakpoints_.end(), [](const Breakpoint& b) {
        return b.wish.enabled && b.verified && b.wish.kind == BreakpointKind::data;
    });
}

std::vector<Breakpoint*> BreakpointBook::at(const std::string& source, std::int32_t line) {
    std::vector<Breakpoint*> found;
    findAt(source, line, found);
    return found;
}

void BreakpointBook::findAt(const std::string& source, std::int32_t line,
                            std::vector<Breakpoint*>& found) {
    found.clear();
    for (Breakpoint& b : breakpoints_)
        if (b.wish.kind == BreakpointKind::line && b.wish.enabled && b.verified &&
            b.resolved.line == line && b.resolved.source == source)
            found.push_back(&b);
}

std::vector<Breakpoint*> BreakpointBook::atEntry(int functionId) {
    std::vector<Breakpoint*> found;
    for (Breakpoint& b : breakpoints_) {
        if (b.wish.kind != BreakpointKind::function || !b.wish.enabled || !b.verified) continue;
        for (const CodeLines::Function* function : code_->find(b.wish.name))
            if (function->id == functionId) found.push_back(&b);
    }
    return found;
}

std::vector<Breakpoint*> BreakpointBook::ofData() {
    std::vector<Breakpoint*> found;
    for (Breakpoint& b : breakpoints_)
        if (b.wish.kind == BreakpointKind::data && b.wish.enabled && b.verified)
            found.push_back(&b);
    return found;
}

}  // namespace korvant
