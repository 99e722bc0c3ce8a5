#include "debug/value_path.h"
#include "host/engine/array_view.h"

#include <charconv>
#include <optional>

#include "debug/value_tree.h"
#include "host/engine/type_view.h"
#include "host/run/inspect.h"
#include "host/scan/source_tokens.h"

namespace korvant {

namespace {

constexpr std::size_t kMostTokens = 4096;

/// Walks from a name to what its members and elements are.
class Walk {
  public:
    Walk(asIScriptEngine& engine, const FrameScope& scope, const TokenList& tokens,
         ValueTarget& found)
        : script_(engine), engine_(engine), scope_(scope), tokens_(tokens), found_(found) {}

    bool run() {
        if (!first()) return false;
        while (at_ < tokens_.size()) {
            // A part of a viewed object has nothing below it.
            if (found_.owner != nullptr) return false;
            if (tokens_.isSymbol(at_, '.') && tokens_.isName(at_ + 1)) {
                if (!member(tokens_.text(at_ + 1))) return false;
                at_ += 2;
            } else if (tokens_.isSymbol(at_, '[') && tokens_.isSymbol(at_ + 2, ']')) {
                if (!element(tokens_.text(at_ + 1))) return false;
                at_ += 3;
            } else {
                return false;
            }
        }
        return true;
    }

  private:
    bool first() {
        std::string name;
        if (tokens_.isSymbol(at_, kScope)) {
            name = "::";
            ++at_;
        }
        for (; tokens_.isName(at_); ++at_) {
            name += tokens_.text(at_);
            if (!tokens_.isSymbol(at_ + 1, kScope)) {
                ++at_;
                return scope_.find(name, found_.value);
            }
            name += "::";
            ++at_;
        }
        return false;
    }

    ValueView view() const { return script_.view(found_.value.typeId, found_.value.address); }

    bool constantInside() const {
        const bool handle = (found_.value.typeId & asTYPEID_OBJHANDLE) != 0;
        if ((found_.value.typeId & asTYPEID_HANDLETOCONST) != 0) return true;
        return !handle && found_.value.constant;
    }

    bool member(std::string_view name) {
        const ValueView object = view();
        const bool constant = constantInside();
        if (object.kind == ValueKind::other) return part(object, name);
        if (object.kind != ValueKind::object) return false;
        auto* const held = static_cast<asIScriptObject*>(const_cast<void*>(object.address));
        for (asUINT i = 0; i < held->GetPropertyCount(); ++i) {
            const char* const known = held->GetPropertyName(i);
            if (known == nullptr || name != known) continue;
            found_.value = {held->GetPropertyTypeId(i), held->GetAddressOfProperty(i), constant};
            return true;
        }
        return false;
    }

    bool part(const ValueView& object, std::string_view name) {
        const asITypeInfo* const type = engine_.GetTypeInfoById(object.typeId);
        const TypeView* const viewed = typeViewOf(type);
        if (viewed == nullptr || object.address == nullptr) return false;
        for (std::uint64_t i = 0; i < viewed->count(object.address); ++i)
            if (viewed->part(object.address, i).name == name) {
                found_.owner = object.address;
                found_.ownerType = type;
                found_.part = i;
                return true;
            }
        return false;
    }

    bool element(std::string_view text) {
        std::uint64_t index = 0;
        const char* const end = text.data() + text.size();
        const auto [stopped, error] = std::from_chars(text.data(), end, index);
        const ValueView array = view();
        if (error != std::errc() || stopped != end || array.kind != ValueKind::array) return false;
        const ArrayView held(&engine_, array.typeId, array.address);
        if (!held || index >= array.elements) return false;
        const bool constant = constantInside();
        found_.value = {held.elementType(),
                        const_cast<void*>(held.element(static_cast<std::uint32_t>(index))),
                        constant};
        return true;
    }

    StoppedScript script_;
    asIScriptEngine& engine_;
    const FrameScope& scope_;
    const TokenList& tokens_;
    ValueTarget& found_;
    std::size_t at_ = 0;
};

}  // namespace

bool readIndex(std::string_view text, std::uint64_t& index) {
    if (text.size() < 3 || text.front() != '[' || text.back() != ']') return false;
    const char* const end = text.data() + text.size() - 1;
    const auto [stopped, error] = std::from_chars(text.data() + 1, end, index);
    return error == std::errc() && stopped == end;
}

std::string whyNotSettable(const TypedValue& value) {
    if (value.address == nullptr)
        return value.gone ? "This variable is gone." : "This variable is not yet set.";
    return value.constant ? "This value is constant." : "";
}

bool findPath(asIScriptEngine& engine, const FrameScope& scope, std::string_view path,
              ValueTarget& found) {
    const std::optional<TokenList> tokens = TokenList::of(path, kMostTokens);
    if (!tokens || tokens->size() == 0) return false;
    found = {};
    if (!Walk(engine, scope, *tokens, found).run()) return false;
    found.evaluateName = path;
    if (found.owner == nullptr) found.why = whyNotSettable(found.value);
    return true;
}

}  // namespace korvant
