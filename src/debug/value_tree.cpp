#include "debug/value_tree.h"
#include "host/engine/array_view.h"

#include <algorithm>
#include <unordered_map>

#include "debug/value_path.h"
#include "debug/value_text.h"
#include "host/engine/type_view.h"

namespace korvant {

namespace {

constexpr std::size_t kMostMarks = 100'000;
constexpr std::uint64_t kMostAtOnce = 100'000;

struct Child {
    std::string name;
    std::string evaluateName;
    TypedValue value;
    const void* owner = nullptr;  ///< of a part
    std::uint64_t part = 0;
    bool heading = false;
    asUINT variable = 0;   ///< tells variables of one name apart; 0 for anything else
    ValueNode parent = 0;  ///< 0: of none
    std::uint64_t index = 0;
    bool byPath = false;  ///< this and the next: see ValueTarget
    unsigned level = ~0u;
};

struct Node {
    std::string path;  ///< tells values of different stops apart or together
    std::string evaluateName;
    std::vector<Child> named;
    ValueView array;                      ///< its elements come behind the named children
    const asITypeInfo* viewed = nullptr;  ///< the type whose view has the parts
    bool constant = false;
    bool fixed = false;  ///< variables of a frame, which stay where they are
    Child origin;
    unsigned reading = 0;
};

/// The number of the object in a value, handles followed.
const asITypeInfo* typeOf(asIScriptEngine& engine, const ValueView& value) {
    return engine.GetTypeInfoById(value.typeId);
}

}  // namespace

struct ValueTree::Impl {
    asIScriptContext* context = nullptr;
    asIScriptModule* module = nullptr;
    asIScriptEngine* engine = nullptr;
    const StatementStarts* source = nullptr;
    std::string mainSource;
    std::vector<Node> nodes;
    std::unordered_map<std::string, ValueNode> byPath;
    std::unordered_map<std::string, std::string> before;  ///< texts of the last stop, by path
    std::unordered_map<std::string, std::string> now;
    std::vector<std::shared_ptr<void>> kept;
    SetVariables* set = nullptr;
    unsigned reading = 0;  ///< goes up when code has run

    StoppedScript script() const { return StoppedScript(*engine); }
    static std::string pathOf(const Node& parent, const Child& child);
    ValueNode add(Node node);
    std::string framePath(unsigned level) const;
    std::string scopePath(ValueScope which, unsigned level) const;
    ValueNode nodeFor(const std::string& path, const Child& child, const ValueView& value);
    Node filled(std::string path, const Child& child, const ValueView& value) const;
    const Node* current(ValueNode node);
    void readAnew(Node& node);
    bool fillNode(Node& node, const Child& child, const ValueView& value) const;
    void fillObject(Node& node, const ValueView& value) const;
    void fillRegistered(Node& node, const asITypeInfo& type, const ValueView& value) const;
    void fillParts(Node& node, const TypeView& view, const void* object) const;
    Child childAt(const Node& node, std::uint64_t index) const;
    bool childNamed(ValueNode node, std::string_view name, Child& found);
    std::uint64_t countOf(const Node& node) const {
        return node.named.size() + node.array.elements;
    }
    DebugValue describe(const std::string& path, const asITypeInfo* viewed, const Child& child,
                        const ValueFormat& format);
    void describePart(DebugValue& shown, const asITypeInfo* viewed, const Child& child) const;
    void describeValue(DebugValue& shown, const std::string& path, const Child& child,
                       const ValueFormat& format);
    void mark(DebugValue& shown, const std::string& path, std::string text);
};

ValueTree::ValueTree() : impl_(std::make_unique<Impl>()) {}
ValueTree::~ValueTree() = default;

void ValueTree::begin(asIScriptContext* context, asIScriptModule* module,
                      const StatementStarts* text, std::string_view mainSource, SetVariables* set) {
    impl_->context = context;
    impl_->set = set;
    impl_->module = module;
    impl_->engine = context != nullptr  ? context->GetEngine()
                    : module != nullptr ? module->GetEngine()
                                        : nullptr;
    impl_->source = text;
    impl_->mainSource = mainSource;
    impl_->nodes.assign(1, {});
    impl_->reading = 0;
    impl_->byPath.clear();
    impl_->now.clear();
}

void ValueTree::end() {
    impl_->before = std::move(impl_->now);
    impl_->now.clear();
    impl_->nodes.clear();
    impl_->byPath.clear();
    impl_->kept.clear();
    impl_->context = nullptr;
    impl_->set = nullptr;
    impl_->module = nullptr;
    impl_->engine = nullptr;
}

void ValueTree::keep(std::shared_ptr<void> what) {
    impl_->kept.push_back(std::move(what));
}

bool ValueTree::knows(ValueNode node) const {
    return node > 0 && node < impl_->nodes.size();
}

FrameScope ValueTree::scopeOf(unsigned level) const {
    return {impl_->context, level, impl_->module, impl_->source, impl_->mainSource, impl_->set};
}

void ValueTree::readAnew() {
    ++impl_->reading;
}

void ValueTree::touch(const void* variable, const FrameScope& scope) {
    const asUINT depth = scope.context() != nullptr ? scope.context()->GetCallstackSize() : 0;
    if (impl_->set != nullptr && scope.function() != nullptr && depth > scope.level())
        for (const NamedValue& local : scope.locals())
            if (local.value.address == variable && local.value.unset)
                impl_->set->touch({variable, scope.function(), local.index}, depth - scope.level());
    for (Node& node : impl_->nodes)
        for (Child& child : node.named)
            if (child.value.address == variable) child.value.unset = false;
}

std::string ValueTree::Impl::pathOf(const Node& parent, const Child& child) {
    std::string path = parent.path + "/" + child.name;
    if (child.variable > 0) path += "#" + std::to_string(child.variable);
    return path;
}

ValueNode ValueTree::Impl::add(Node node) {
    const auto known = byPath.find(node.path);
    if (known != byPath.end()) return known->second;
    nodes.push_back(std::move(node));
    const auto added = static_cast<ValueNode>(nodes.size() - 1);
    byPath.emplace(nodes.back().path, added);
    return added;
}

/// The same frame at two stops has the same function and the same depth from the outermost.
std::string ValueTree::Impl::framePath(unsigned level) const {
    if (context == nullptr || level >= context->GetCallstackSize()) return "-";
    const asIScriptFunction* const function = context->GetFunction(level);
    return std::to_string(context->GetCallstackSize() - level) + "#" +
           (function != nullptr ? std::to_string(function->GetId()) : "");
}

std::string ValueTree::Impl::scopePath(ValueScope which, unsigned level) const {
    if (which == ValueScope::globals) return "G";
    return (which == ValueScope::locals ? "L" : "T") + framePath(level);
}

ValueNode ValueTree::scope(ValueScope which, unsigned level) {
    if (impl_->engine == nullptr) return 0;
    Node node;
    node.fixed = true;
    node.path = impl_->scopePath(which, level);
    // Variables that code has set since are touched there.
    if (const auto known = impl_->byPath.find(node.path); known != impl_->byPath.end())
        return known->second;
    const FrameScope names = scopeOf(level);
    const bool global = which == ValueScope::globals;
    for (NamedValue& value : which == ValueScope::locals ? names.locals()
                             : global                    ? names.globals()
                                                         : names.members()) {
        std::string prefix = which == ValueScope::thisObject ? "this." : "";
        TypedValue named;
        if (global && names.find(value.name, named) && named.address != value.value.address)
            prefix = "::";
        const asUINT variable = which == ValueScope::locals ? value.index + 1 : 0;
        prefix += value.name;
        node.named.push_back({std::move(value.name), std::move(prefix), value.value, nullptr, 0,
                              false, variable, 0, 0, false, ~0u});
    }
    return impl_->add(std::move(node));
}

Child ValueTree::Impl::childAt(const Node& node, std::uint64_t index) const {
    if (index < node.named.size()) return node.named[static_cast<std::size_t>(index)];
    Child child;
    const auto element = static_cast<std::uint32_t>(index - node.named.size());
    child.name = "[" + std::to_string(element) + "]";
    if (!node.evaluateName.empty()) child.evaluateName = node.evaluateName + child.name;
    const ArrayView array(engine, node.array.typeId, node.array.address);
    if (!array) return child;
    child.value = {array.elementType(), const_cast<void*>(array.element(element)), node.constant};
    return child;
}

std::vector<DebugValue> ValueTree::children(ValueNode node, std::uint64_t start,
                                            std::uint64_t count, const ValueFormat& format,
                                            Filter filter) {
    std::vector<DebugValue> found;
    if (!knows(node)) return found;
    // describe() adds nodes, which moves them.
    const Node parent = *impl_->current(node);
    std::uint64_t begin = filter == Filter::indexed ? parent.named.size() : 0;
    const std::uint64_t end =
        filter == Filter::named ? parent.named.size() : impl_->countOf(parent);
    begin += std::min(start, end - std::min(begin, end));
    const std::uint64_t most = count == 0 ? kMostAtOnce : std::min(count, kMostAtOnce);
    for (std::uint64_t i = begin; i < end && i - begin < most; ++i) {
        Child child = impl_->childAt(parent, i);
        child.parent = node;
        child.index = i;
        found.push_back(
            impl_->describe(impl_->pathOf(parent, child), parent.viewed, child, format));
    }
    return found;
}

DebugValue ValueTree::Impl::describe(const std::string& path, const asITypeInfo* viewed,
                                     const Child& child, const ValueFormat& format) {
    DebugValue shown;
    shown.name = child.name;
    shown.evaluateName = child.evaluateName;
    if (child.owner != nullptr)
        describePart(shown, viewed, child);
    else
        describeValue(shown, path, child, format);
    return shown;
}

void ValueTree::Impl::describePart(DebugValue& shown, const asITypeInfo* viewed,
                                   const Child& child) const {
    const TypeView* const view = typeViewOf(viewed);
    if (view == nullptr) return;
    ViewedPart part = view->part(child.owner, child.part);
    shown.type = std::move(part.type);
    shown.value = std::move(part.value);
    shown.settable = part.settable;
}

void ValueTree::Impl::describeValue(DebugValue& shown, const std::string& path, const Child& child,
                                    const ValueFormat& format) {
    const StoppedScript reader = script();
    const TypedValue& value = child.value;
    const ValueView view = reader.view(value.typeId, value.address);
    shown.type = typeText(*engine, value.typeId, view);
    const bool there = value.address != nullptr && !value.unset;
    std::string text = there        ? valueText(*engine, reader, view, {false, format.longest})
                       : value.gone ? std::string(kGone)
                                    : std::string(kNotYetSet);
    shown.value = there && format.hex ? valueText(*engine, reader, view, format) : text;
    shown.settable = value.address != nullptr && !value.constant;
    shown.node = there ? nodeFor(path, child, view) : 0;
    if (shown.node != 0) {
        shown.named = nodes[shown.node].named.size();
        shown.indexed = nodes[shown.node].array.elements;
    }
    mark(shown, path, std::move(text));
}

void ValueTree::Impl::mark(DebugValue& shown, const std::string& path, std::string text) {
    const auto old = before.find(path);
    shown.changed = old != before.end() && old->second != text;
    if (now.size() < kMostMarks) now.insert_or_assign(path, std::move(text));
}

ValueNode ValueTree::Impl::nodeFor(const std::string& path, const Child& child,
                                   const ValueView& value) {
    const auto known = byPath.find(path);
    if (known == byPath.end()) {
        Node node = filled(path, child, value);
        return countOf(node) > 0 ? add(std::move(node)) : 0;
    }
    Node& node = nodes[known->second];
    if (node.reading != reading) node = filled(path, child, value);
    return countOf(node) > 0 ? known->second : 0;
}

/// Without children where the value has none.
Node ValueTree::Impl::filled(std::string path, const Child& child, const ValueView& value) const {
    Node node;
    node.path = std::move(path);
    node.evaluateName = child.evaluateName;
    node.constant = child.value.constant && (child.value.typeId & asTYPEID_OBJHANDLE) == 0;
    if ((child.value.typeId & asTYPEID_HANDLETOCONST) != 0) node.constant = true;
    node.origin = child;
    node.reading = reading;
    fillNode(node, child, value);
    return node;
}

/// Null for none. What it stands in is read before it, from the outermost.
const Node* ValueTree::Impl::current(ValueNode node) {
    if (node == 0 || node >= nodes.size()) return nullptr;
    std::vector<ValueNode> old;
    for (ValueNode at = node; at != 0 && nodes[at].reading != reading; at = nodes[at].origin.parent)
        old.push_back(at);
    for (; !old.empty(); old.pop_back()) readAnew(nodes[old.back()]);
    return &nodes[node];
}

void ValueTree::Impl::readAnew(Node& node) {
    node.reading = reading;
    if (node.fixed) return;
    Child child = node.origin;
    child.value.address = nullptr;
    if (node.origin.parent != 0) {
        const Node& parent = nodes[node.origin.parent];
        const std::uint64_t index = node.origin.index;
        const Child there = index < countOf(parent) ? childAt(parent, index) : Child();
        if (there.owner == nullptr && there.name == child.name) child.value = there.value;
    } else if (!node.origin.byPath) {
        child.value = node.origin.value;  // kept alive
    } else {
        ValueTarget found;
        const FrameScope scope(context, node.origin.level, module, source, mainSource, set);
        if (findPath(*engine, scope, child.evaluateName, found)) child.value = found.value;
    }
    const TypedValue& value = child.value;
    const bool shown = value.address != nullptr && !value.unset;
    node = filled(std::move(node.path), child,
                  shown ? script().view(value.typeId, value.address) : ValueView());
}

/// False for a value without children.
bool ValueTree::Impl::fillNode(Node& node, const Child&, const ValueView& value) const {
    if (value.kind == ValueKind::array) {
        node.array = value;
        return true;
    }
    if (value.kind == ValueKind::object) {
        fillObject(node, value);
        return true;
    }
    const asITypeInfo* const type = typeOf(*engine, value);
    if (value.kind != ValueKind::other || type == nullptr || value.address == nullptr) return false;
    if (const TypeView* const view = typeViewOf(type)) {
        node.viewed = type;
        fillParts(node, *view, value.address);
        return true;
    }
    if ((type->GetFlags() & asOBJ_FUNCDEF) == 0) fillRegistered(node, *type, value);
    return true;
}

void ValueTree::Impl::fillObject(Node& node, const ValueView& value) const {
    auto* const object = static_cast<asIScriptObject*>(const_cast<void*>(value.address));
    for (asUINT i = 0; i < object->GetPropertyCount(); ++i) {
        Child child;
        const char* const name = object->GetPropertyName(i);
        child.name = name != nullptr ? name : "";
        if (!node.evaluateName.empty()) child.evaluateName = node.evaluateName + "." + child.name;
        child.value = {object->GetPropertyTypeId(i), object->GetAddressOfProperty(i),
                       node.constant};
        node.named.push_back(std::move(child));
    }
}

/// Properties that a host registered with their place in the object.
void ValueTree::Impl::fillRegistered(Node& node, const asITypeInfo& type,
                                     const ValueView& value) const {
    for (asUINT i = 0; i < type.GetPropertyCount(); ++i) {
        const char* name = nullptr;
        int typeId = 0;
        int offset = 0;
        bool isReference = false;
        int composite = 0;
        bool indirect = false;
        if (type.GetProperty(i, &name, &typeId, nullptr, nullptr, &offset, &isReference, nullptr,
                             &composite, &indirect) < 0)
            continue;
        auto* place = static_cast<char*>(const_cast<void*>(value.address)) + composite;
        if (indirect) place = *reinterpret_cast<char**>(place);
        if (place == nullptr) continue;
        place += offset;
        if (isReference) place = *reinterpret_cast<char**>(place);
        Child child;
        child.name = name != nullptr ? name : "";
        if (!node.evaluateName.empty()) child.evaluateName = node.evaluateName + "." + child.name;
        child.value = {typeId, place, node.constant};
        node.named.push_back(std::move(child));
    }
}

void ValueTree::Impl::fillParts(Node& node, const TypeView& view, const void* object) const {
    const std::uint64_t count = std::min(view.count(object), kMostAtOnce);
    for (std::uint64_t i = 0; i < count; ++i) {
        const ViewedPart part = view.part(object, i);
        Child child;
        child.name = part.group.empty() ? part.name : part.group + "." + part.name;
        if (!node.evaluateName.empty()) child.evaluateName = node.evaluateName + "." + part.name;
        child.owner = object;
        child.part = i;
        node.named.push_back(std::move(child));
    }
}

DebugValue ValueTree::show(const ValueTarget& value, std::string name, const ValueFormat& format) {
    if (impl_->engine == nullptr) return {};
    const Child child{
        std::move(name), value.evaluateName, value.value, value.owner, value.part, false, 0, 0, 0,
        value.byPath,    value.level};
    // The same expression may give another object each time.
    const auto address = reinterpret_cast<std::uintptr_t>(value.value.address);
    const std::string path = "=" + value.evaluateName + "@" + std::to_string(address);
    return impl_->describe(path, value.ownerType, child, format);
}

bool ValueTree::Impl::childNamed(ValueNode node, std::string_view name, Child& found) {
    if (node == 0 || node >= nodes.size()) return false;
    const Node& parent = *current(node);
    std::uint64_t index = 0;
    const auto named = std::find_if(parent.named.begin(), parent.named.end(),
                                    [name](const Child& child) { return child.name == name; });
    if (named != parent.named.end())
        index = static_cast<std::uint64_t>(named - parent.named.begin());
    else if (readIndex(name, index) && index < parent.array.elements)
        index += parent.named.size();
    else
        return false;
    found = childAt(parent, index);
    found.parent = node;
    found.index = index;
    return true;
}

bool ValueTree::target(ValueNode node, std::string_view name, ValueTarget& found) const {
    Child child;
    if (!impl_->childNamed(node, name, child)) return false;
    found = {child.value, child.owner,        impl_->nodes[node].viewed,
             child.part,  child.evaluateName, {}};
    if (child.owner == nullptr) found.why = whyNotSettable(child.value);
    return true;
}

bool ValueTree::child(ValueNode node, std::string_view name, DebugValue& found,
                      const ValueFormat& format) {
    Child child;
    if (!impl_->childNamed(node, name, child)) return false;
    // describe() adds nodes, which moves them.
    const std::string path = impl_->pathOf(impl_->nodes[node], child);
    const asITypeInfo* const viewed = impl_->nodes[node].viewed;
    found = impl_->describe(path, viewed, child, format);
    return true;
}

bool ValueTree::find(const FrameScope& scope, std::string_view path, ValueTarget& found) const {
    if (impl_->engine == nullptr) return false;
    if (!findPath(*impl_->engine, scope, path, found)) return false;
    found.byPath = true;
    found.level = scope.level();
    return true;
}

}  // namespace korvant
