#include "debug/frame_scope.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "base/text/characters.h"

namespace korvant {

namespace {

/// "const B b" is constant, and so is "B@const h"; of "const B@ h" it is what the handle leads to.
bool isConstant(const std::string& declaration, int typeId) {
    if ((typeId & asTYPEID_OBJHANDLE) == 0) return declaration.starts_with("const ");
    return declaration.find("@const") != std::string::npos;
}

std::string withNamespace(const std::string& space, std::string_view name) {
    return space.empty() ? std::string(name) : space + "::" + std::string(name);
}

std::string outerOf(const std::string& space) {
    const auto end = space.rfind("::");
    return end == std::string::npos ? std::string() : space.substr(0, end);
}

}  // namespace

std::string whyNoValue(std::string_view name, const TypedValue& value) {
    return "\"" + std::string(name) + "\" is " + (value.gone ? "gone." : "not yet set.");
}

std::string whyNoValue(std::string_view name, const FrameScope& scope) {
    NamedValue local;
    scope.findLocal(name, local);
    return whyNoValue(name, local.value);
}

FrameScope::FrameScope(asIScriptContext* context, unsigned level, asIScriptModule* module,
                       const StatementStarts* text, std::string_view mainSource,
                       const SetVariables* set)
    : context_(context), level_(level), module_(module), text_(text), set_(set) {
    if (context == nullptr || level >= context->GetCallstackSize()) return;
    function_ = context->GetFunction(level);
    if (function_ == nullptr || function_->GetFuncType() != asFUNC_SCRIPT) return;
    if (function_->GetModule() != nullptr) module_ = function_->GetModule();
    const char* section = nullptr;
    line_ = context->GetLineNumber(level, &column_, &section);
    if (orEmpty(section) != mainSource) text_ = nullptr;
}

FrameScope::FrameScope(const Place& place, asIScriptContext& context, asIScriptModule* module,
                       const StatementStarts* text, std::string_view mainSource,
                       const SetVariables* set)
    : context_(&context),
      level_(0),
      function_(const_cast<asIScriptFunction*>(place.function)),
      module_(module),
      text_(text),
      set_(set),
      line_(place.line),
      column_(place.column) {
    if (function_ != nullptr && function_->GetModule() != nullptr) module_ = function_->GetModule();
    if (place.section == nullptr || place.section != mainSource) text_ = nullptr;
}

FrameScope FrameScope::globalsWithin(std::string nameSpace) const {
    FrameScope scope(context_, ~0u, module_, nullptr, {});
    scope.nameSpace_ = std::move(nameSpace);
    return scope;
}

std::string FrameScope::nameSpace() const {
    if (function_ == nullptr) return nameSpace_;
    const asITypeInfo* const type = function_->GetObjectType();
    return orEmpty(type != nullptr ? type->GetNamespace() : function_->GetNamespace());
}

std::string_view FrameScope::localName(asUINT index) const {
    const char* const name = context_->GetVarName(index, level_);
    return name != nullptr ? name : "";
}

/// Whether the statement at which the frame stands is being executed.
bool FrameScope::begun() const {
    return level_ > 0 || context_->GetState() == asEXECUTION_EXCEPTION;
}

FrameScope::Namesake FrameScope::namesakeOf(asUINT index) const {
    const std::string_view name = localName(index);
    const int all = context_->GetVarCount(level_);
    Namesake which;
    for (asUINT i = 0; all > 0 && i < static_cast<asUINT>(all); ++i) {
        if (localName(i) != name) continue;
        if (i < index) ++which.nth;
        ++which.count;
    }
    return which;
}

/// `declared`: by an earlier statement.
FrameScope::Known FrameScope::known(asUINT index, const Namesake& which) const {
    const std::string_view name = localName(index);
    if (name.empty()) return Known::no;
    const Known byCode = context_->IsVarInScope(index, level_) ? Known::yes : Known::no;
    if (text_ == nullptr) return byCode;
    const auto seen = text_->variables().seenAt(line_, column_, name, which.nth, which.count);
    if (!seen) return byCode;
    // The engine knows one without a value from the end of the statement before it on.
    if (*seen == DeclaredVariables::Seen::declaredThere)
        return begun() && notYetSet(name) ? byCode : Known::no;
    return *seen == DeclaredVariables::Seen::yes ? Known::declared : Known::no;
}

bool FrameScope::notYetSet(std::string_view name) const {
    return text_ != nullptr && line_ > 0 && text_->declares(line_, column_, name);
}

/// The engine leaves what lay in memory before to a variable of a plain type without a value.
bool FrameScope::neverSet(const NamedValue& variable) const {
    if (text_ == nullptr || line_ <= 0 || (variable.value.typeId & asTYPEID_MASK_OBJECT) != 0)
        return false;
    if (set_ != nullptr)
        if (const auto set =
                set_->isSet({variable.value.address, function_, variable.index}, line_, column_))
            return !*set;
    return text_->neverSet(line_, column_, variable.name, begun());
}

/// What the text tells is the same at every pass.
bool FrameScope::isUnset(const TypedValue& local, asUINT index, const void* address) const {
    if (text_ == nullptr || (local.typeId & asTYPEID_MASK_OBJECT) != 0) return false;
    const auto set = set_ != nullptr ? set_->isSet({address, function_, index}, line_, column_)
                                     : std::optional<bool>();
    return set ? !*set : local.unset;
}

NamedValue FrameScope::local(asUINT index, Known known) const {
    NamedValue found;
    found.index = index;
    found.name = orEmpty(context_->GetVarName(index, level_));
    // The engine's buffer is used again by the next question.
    found.declaration = orEmpty(context_->GetVarDeclaration(index, level_, true));
    found.value.typeId = context_->GetVarTypeId(index, level_);
    found.value.constant = isConstant(found.declaration, found.value.typeId);
    const bool declared = known == Known::declared;
    // Of two with one name the inner one may be declared there.
    if (declared || !notYetSet(found.name))
        found.value.address = context_->GetAddressOfVar(index, level_);
    found.value.unset = found.value.address != nullptr && neverSet(found);
    found.value.gone = found.value.address == nullptr && declared;
    return found;
}

std::vector<NamedValue> FrameScope::locals(std::string_view among) const {
    std::vector<NamedValue> found;
    if (function_ == nullptr || function_->GetFuncType() != asFUNC_SCRIPT) return found;
    const int count = context_->GetVarCount(level_);
    std::vector<std::pair<asUINT, std::size_t>> wanted;  // with how many of its name come before it
    std::unordered_map<std::string_view, std::size_t> counts;
    for (asUINT i = 0; count > 0 && i < static_cast<asUINT>(count); ++i) {
        const std::string_view name = localName(i);
        if (among.empty() || among.find(name) != std::string_view::npos)
            wanted.emplace_back(i, counts[name]++);
    }
    for (const auto& [index, nth] : wanted) {
        const std::string_view name = localName(index);
        const Known seen = known(index, {nth, counts[name]});
        if (seen == Known::no) continue;
        if (nth > 0)
            std::erase_if(found, [name](const NamedValue& outer) { return outer.name == name; });
        found.push_back(local(index, seen));
    }
    return found;
}

bool FrameScope::hasThis() const {
    return function_ != nullptr && function_->GetObjectType() != nullptr &&
           function_->GetFuncType() == asFUNC_SCRIPT && context_->GetThisPointer(level_) != nullptr;
}

TypedValue FrameScope::thisObject() const {
    if (!hasThis()) return {};
    auto* const object = static_cast<asIScriptObject*>(context_->GetThisPointer(level_));
    return {object->GetTypeId(), object, function_->IsReadOnly()};
}

std::vector<NamedValue> FrameScope::members() const {
    std::vector<NamedValue> found;
    if (!hasThis()) return found;
    auto* const object = static_cast<asIScriptObject*>(context_->GetThisPointer(level_));
    for (asUINT i = 0; i < object->GetPropertyCount(); ++i)
        found.push_back({orEmpty(object->GetPropertyName(i)),
                         {},
                         {object->GetPropertyTypeId(i), object->GetAddressOfProperty(i),
                          function_->IsReadOnly()},
                         i});
    return found;
}

std::vector<NamedValue> FrameScope::globals() const {
    std::vector<NamedValue> found;
    for (asUINT i = 0; module_ != nullptr && i < module_->GetGlobalVarCount(); ++i) {
        const char* name = nullptr;
        const char* space = nullptr;
        NamedValue global;
        if (module_->GetGlobalVar(i, &name, &space, &global.value.typeId, &global.value.constant) <
            0)
            continue;
        global.name = withNamespace(orEmpty(space), orEmpty(name));
        global.value.address = module_->GetAddressOfGlobalVar(i);
        found.push_back(std::move(global));
    }
    return found;
}

bool FrameScope::findLocal(std::string_view name, NamedValue& found) const {
    if (function_ == nullptr || function_->GetFuncType() != asFUNC_SCRIPT) return false;
    for (int i = context_->GetVarCount(level_); i-- > 0;) {
        const auto index = static_cast<asUINT>(i);
        if (localName(index) != name) continue;
        const Known seen = known(index, namesakeOf(index));
        if (seen == Known::no) continue;
        found = local(index, seen);
        return true;
    }
    return false;
}

bool FrameScope::findMember(std::string_view name, NamedValue& found) const {
    if (!hasThis()) return false;
    for (NamedValue& member : members())
        if (member.name == name) {
            found = std::move(member);
            return true;
        }
    return false;
}

bool FrameScope::findGlobal(std::string_view name, TypedValue& found) const {
    const std::vector<NamedValue> all = globals();
    const bool fromTop = name.starts_with("::");
    if (fromTop) name.remove_prefix(2);
    for (std::string space = fromTop ? std::string() : nameSpace();; space = outerOf(space)) {
        const std::string full = withNamespace(space, name);
        const auto global = std::find_if(all.begin(), all.end(),
                                         [&](const NamedValue& g) { return g.name == full; });
        if (global != all.end()) {
            found = global->value;
            return true;
        }
        if (space.empty()) return false;
    }
}

bool FrameScope::find(std::string_view name, TypedValue& found) const {
    NamedValue local;
    if (findLocal(name, local)) {
        found = local.value;
        return true;
    }
    if (name == "this" && hasThis()) {
        found = thisObject();
        return true;
    }
    if (!findMember(name, local)) return findGlobal(name, found);
    found = local.value;
    return true;
}

}  // namespace korvant
