#include "debug/frames.h"

#include <algorithm>
#include <cstring>

#include "base/text/characters.h"
#include "host/run/inspect.h"

namespace korvant {

namespace {

/// The compiler calls what has no name in the script by names of its own.
std::string plainName(const asIScriptFunction& function) {
    std::string name = orEmpty(function.GetName());
    return !name.empty() && name.front() == '$' ? "lambda" : name;
}

}  // namespace

bool isInitialiser(const asIScriptFunction& function) {
    return orEmpty(function.GetName()).empty();
}

std::string qualifiedName(const asIScriptFunction& function) {
    if (isInitialiser(function)) return "global variables";
    std::string name = plainName(function);
    std::string space = orEmpty(function.GetNamespace());
    if (const asITypeInfo* const type = function.GetObjectType()) {
        space = orEmpty(type->GetNamespace());
        name = orEmpty(type->GetName()) + "::" + name;
    }
    return space.empty() ? name : space + "::" + name;
}

std::string declarationOf(const asIScriptFunction& function) {
    if (isInitialiser(function)) return qualifiedName(function);
    std::string text = orEmpty(function.GetDeclaration(true, true, false));
    const std::string name = orEmpty(function.GetName());
    const auto at = name.starts_with('$') ? text.find(name) : std::string::npos;
    if (at != std::string::npos) text.replace(at, name.size(), plainName(function));
    return text;
}

Frames::Frames(asIScriptContext* context, std::string_view mainSource)
    : context_(context), mainSource_(mainSource) {
    const asUINT count = context != nullptr ? context->GetCallstackSize() : 0;
    for (asUINT level = 0; level < count; ++level)
        if (isWritten(context->GetFunction(level))) levels_.push_back(level);
}

DebugFrame Frames::frame(unsigned index) const {
    DebugFrame frame;
    if (index >= count()) return frame;
    frame.level = levels_[index];
    asIScriptFunction* const function = context_->GetFunction(frame.level);
    if (function == nullptr) return frame;  // the call has ended since the levels were counted
    frame.name = qualifiedName(*function);
    frame.function = declarationOf(*function);
    frame.native = function->GetFuncType() == asFUNC_SYSTEM;
    if (frame.native) return frame;
    const char* section = nullptr;
    int column = 0;
    frame.place.line = std::max(context_->GetLineNumber(frame.level, &column, &section), 0);
    frame.place.column = column;
    frame.place.source = orEmpty(section);
    if (frame.place.source == mainSource_) frame.place.source.clear();
    return frame;
}

}  // namespace korvant
