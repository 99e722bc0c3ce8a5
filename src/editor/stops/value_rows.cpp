#include "editor/stops/value_rows.h"

#include <algorithm>
#include <utility>

namespace korvant {

namespace {

constexpr int kDeepest = 64;
constexpr std::uint64_t kLookedAt = 16;  // members, for a text among them
constexpr std::size_t kTold = 4;         // members, where there is no text
constexpr char kGlobals[] = "Global variables";

/// "granite (0)" is an enum's value; its name is enough among others.
std::string withoutNumber(const std::string& value) {
    const std::size_t bracket = value.find(" (");
    return value.back() == ')' && bracket != std::string::npos ? value.substr(0, bracket) : value;
}

/// One whose text is an expression: of numbers, texts, and arrays of these.
bool isPlainArray(const ValueRow& row) {
    std::string_view type = row.value.type;
    if (type.starts_with("const ")) type.remove_prefix(6);
    if (row.value.named != 0 || !type.ends_with("[]")) return false;
    type = type.substr(0, type.find('['));
    static constexpr std::string_view kPlain[] = {"int",   "int8",   "int16",  "int32",  "int64",
                                                  "uint",  "uint8",  "uint16", "uint32", "uint64",
                                                  "float", "double", "bool",   "string"};
    return std::find(std::begin(kPlain), std::end(kPlain), type) != std::end(kPlain);
}

}  // namespace

void ValueRows::add(DebugValue value, ValueNode parent, int depth, const std::string& path) {
    const auto opened = open_.find(path);
    ValueRow row;
    row.depth = depth;
    row.parent = parent;
    row.path = path;
    row.open = opened != open_.end() && value.node != 0 && depth < kDeepest;
    row.value = value;
    row.summary = summaryOf(value);
    rows_.push_back(row);
    if (row.open) addChildren(value, depth + 1, path);
}

/// An array by its length, an object by its title or its first text, else by its first plain
/// members, else by its type.
std::string ValueRows::summaryOf(const DebugValue& value) {
    if (value.node == 0 || value.heading) return {};
    if (value.named == 0)
        return std::to_string(value.indexed) + (value.indexed == 1 ? " element" : " elements");
    if (!value.value.empty() && value.value.front() == '"') return value.value;
    std::string plain;
    std::size_t told = 0;
    for (const DebugValue& child : session_.values().children(value.node, 0, kLookedAt)) {
        if (child.type == "string" || child.type == "const string") return child.value;
        if (child.node != 0 || child.heading || told == kTold) continue;
        plain += (told++ > 0 ? ", " : "") + withoutNumber(child.value);
    }
    return plain.empty() ? value.type : plain;
}

void ValueRows::addChildren(const DebugValue& value, int depth, const std::string& path) {
    const std::uint64_t all = value.named + value.indexed;
    const std::uint64_t shown = std::max(open_[path], kPage);
    for (DebugValue& child : session_.values().children(value.node, 0, shown)) {
        const std::string childPath = path + "/" + child.name;
        add(std::move(child), value.node, depth, childPath);
    }
    if (all <= shown) return;
    ValueRow rest;
    rest.depth = depth;
    rest.path = path;
    rest.more = all - shown;
    rows_.push_back(std::move(rest));
}

bool ValueRows::readOne(unsigned frame, const std::string& expression) {
    if (expression != expression_) open_.clear();
    frame_ = frame;
    expression_ = expression;
    rows_.clear();
    ShownValue shown = session_.show(frame, expression, EvaluationPurpose::hover);
    if (!shown.error.empty() || shown.isVoid) return false;
    shown.value.name = expression;
    if (shown.value.node != 0) open_.try_emplace(expression, kPage);
    add(std::move(shown.value), 0, 0, expression);
    return true;
}

void ValueRows::readAgain() {
    if (expression_.empty())
        read(frame_);
    else
        readOne(frame_, expression_);
}

void ValueRows::read(unsigned frame) {
    frame_ = frame;
    expression_.clear();
    rows_.clear();
    const ValueNode locals = session_.scope(ValueScope::locals, frame);
    for (DebugValue& value : session_.values().children(locals)) {
        const std::string path = value.name;
        add(std::move(value), locals, 0, path);
    }
    if (session_.hasThis(frame)) {
        ShownValue self = session_.show(frame, "this", EvaluationPurpose::hover);
        self.value.name = "this";
        if (self.error.empty()) add(std::move(self.value), 0, 0, "this");
    }
    DebugValue globals;
    globals.name = kGlobals;
    globals.heading = true;
    globals.node = session_.scope(ValueScope::globals, frame);
    globals.named = globals.node != 0 ? session_.values().children(globals.node).size() : 0;
    if (globals.named > 0) add(std::move(globals), 0, 0, kGlobals);
}

void ValueRows::toggle(std::size_t index) {
    if (index >= rows_.size()) return;
    const std::string path = rows_[index].path;
    if (rows_[index].more > 0)
        open_[path] = std::max(open_[path], kPage) + kPage;
    else if (rows_[index].open)
        open_.erase(path);
    else if (rows_[index].hasChildren())
        open_[path] = kPage;
    readAgain();
}

void ValueRows::closeAll() {
    open_.clear();
    readAgain();
}

std::size_t ValueRows::find(const std::string& path) const {
    const auto row = std::find_if(rows_.begin(), rows_.end(), [&path](const ValueRow& one) {
        return one.more == 0 && one.path == path;
    });
    return static_cast<std::size_t>(row - rows_.begin());
}

std::string ValueRows::editText(std::size_t index) const {
    if (index >= rows_.size()) return {};
    const ValueRow& row = rows_[index];
    ValueTarget target;
    if (row.parent == 0 || row.value.indexed > kPage || (row.value.node != 0 && !isPlainArray(row)))
        return {};
    if (!session_.values().target(row.parent, row.value.name, target) || target.value.unset)
        return {};
    DebugValue whole = row.value;
    session_.values().child(row.parent, row.value.name, whole, ValueFormat::whole());
    return whole.value.empty() ? whole.value : withoutNumber(whole.value);
}

std::string ValueRows::whyNotSettable(std::size_t index) const {
    if (index >= rows_.size()) return {};
    const ValueRow& row = rows_[index];
    if (row.value.settable) return {};
    ValueTarget target;
    const bool known = row.parent != 0
                           ? session_.values().target(row.parent, row.value.name, target)
                           : session_.values().find(session_.names(frame_), row.path, target);
    return known && !target.why.empty() ? target.why : "This value cannot be set.";
}

std::string ValueRows::set(std::size_t index, const std::string& expression) {
    if (index >= rows_.size()) return {};
    const ValueRow& row = rows_[index];
    const ShownValue set = row.parent != 0
                               ? session_.setChild(row.parent, row.value.name, frame_, expression)
                               : session_.setExpression(frame_, row.value.evaluateName, expression);
    readAgain();
    return set.error;
}

std::string ValueRows::copyText(std::size_t index) const {
    if (index >= rows_.size()) return {};
    const ValueRow& row = rows_[index];
    DebugValue whole = row.value;
    if (row.parent != 0)
        session_.values().child(row.parent, row.value.name, whole, ValueFormat::whole());
    return row.value.name + " = " + whole.value;
}

}  // namespace korvant
