#include "language/suggestions.h"

#include <algorithm>
#include <set>

#include "language/script_help.h"
#include "language/symbols.h"

namespace korvant {

namespace {

using Kind = Suggestion::Kind;

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

Kind kindOf(const Declaration& one) {
    switch (one.kind) {
        case DeclarationKind::nameSpace:
            return Kind::nameSpace;
        case DeclarationKind::classType:
        case DeclarationKind::mixinType:
        case DeclarationKind::functionType:
        case DeclarationKind::typeAlias:
            return Kind::classType;
        case DeclarationKind::interfaceType:
            return Kind::interfaceType;
        case DeclarationKind::enumType:
            return Kind::enumType;
        case DeclarationKind::enumValue:
            return Kind::enumValue;
        case DeclarationKind::function:
            return Kind::function;
        case DeclarationKind::method:
            return Kind::method;
        case DeclarationKind::memberVariable:
        case DeclarationKind::property:
            return Kind::field;
        default:
            return Kind::variable;
    }
}

class Collector {
  public:
    Collector(Meanings& meanings, const Documentation& library, std::size_t offset)
        : meanings_(meanings), index_(meanings.index()), library_(library), offset_(offset) {}

    std::vector<Suggestion> collect() {
        if (inRemarkOrText(index_, offset_)) return {};
        const auto& tokens = index_.tokens();
        std::size_t before = index_.tokenAt(offset_);
        if (before > 0 && static_cast<std::size_t>(tokens[before - 1].end()) >= offset_ &&
            tokens[before - 1].isWord())
            --before;
        if (before > 0 && tokens[before - 1].is("."))
            members(static_cast<std::size_t>(tokens[before - 1].position));
        else if (before > 1 && tokens[before - 1].is("::"))
            qualified(std::string(tokens[before - 2].text));
        else if (before > 0 && tokens[before - 1].kind == ScriptToken::Kind::number &&
                 static_cast<std::size_t>(tokens[before - 1].end()) == offset_)
            return {};
        else
            everything();
        return std::move(found_);
    }

  private:
    void add(Suggestion suggestion) {
        if (!suggestion.label.empty() && seen_.emplace(suggestion.label, suggestion.detail).second)
            found_.push_back(std::move(suggestion));
    }

    void addDeclared(int declaration) {
        const Declaration& one = index_.declarations()[at(declaration)];
        if (one.kind == DeclarationKind::constructor || one.kind == DeclarationKind::destructor ||
            one.kind == DeclarationKind::accessor || one.kind == DeclarationKind::lambda ||
            isOperatorName(one.name))
            return;
        const std::string shown = headline(index_, declaration);
        // Written like a variable.
        if (isAccessor(one.name) && shown.ends_with(" property"))
            add({Kind::field,
                 std::string(one.name.substr(4)),
                 shown,
                 remarkAbove(index_, declaration),
                 {},
                 false});
        add({kindOf(one),
             std::string(one.name),
             shown,
             remarkAbove(index_, declaration),
             {},
             false});
    }

    static bool isAccessor(std::string_view name) {
        return name.starts_with("get_") || name.starts_with("set_");
    }

    void addFunction(const asIScriptFunction& function, Kind kind) {
        const std::string name = function.GetName();
        if (isOperatorName(name) && kind == Kind::method) return;
        add({kind,
             name,
             function.GetDeclaration(false, false, true),
             library_.of(function).markdown(),
             {},
             false});
    }

    /// Private members inside their class alone, protected ones in derived classes as well.
    bool visible(int declaration, int owner, int inside) const {
        const Declaration& one = index_.declarations()[at(declaration)];
        if (!one.isPrivate && !one.isProtected) return true;
        return inside == owner || (one.isProtected && inside != kNoIndex);
    }

    /// What a derived class has anew hides what it inherits.
    void membersOfClass(int type, int inside) {
        std::set<std::pair<std::string_view, std::vector<std::string>>> known;
        for (const int one : index_.lineageOf(type))
            for (const int i : index_.declaredIn(index_.declarations()[at(one)].inner)) {
                const std::string_view name = index_.declarations()[at(i)].name;
                const bool fresh = known.emplace(name, parameterTypes(index_, i)).second;
                if (fresh && visible(i, one, inside)) addDeclared(i);
            }
    }

    void members(std::size_t dot) {
        const Meanings::Owner owner = meanings_.ownerBefore(dot);
        if (owner.type != kNoIndex) return membersOfClass(owner.type, index_.classAt(offset_));
        const asITypeInfo* const info = meanings_.oracle().typeInfo(owner.name, offset_);
        if (info == nullptr) return;
        for (asUINT i = 0; i < info->GetMethodCount(); ++i)
            addFunction(*info->GetMethodByIndex(i), Kind::method);
        for (asUINT i = 0; i < info->GetPropertyCount(); ++i) {
            const char* name = nullptr;
            info->GetProperty(i, &name);
            add({Kind::field, name, info->GetPropertyDeclaration(i), {}, {}, false});
        }
    }

    /// Namespaces may be opened several times; enums hold their values.
    void qualified(const std::string& name) {
        for (std::size_t i = 0; i < index_.declarations().size(); ++i) {
            const Declaration& one = index_.declarations()[i];
            const bool holds = one.kind == DeclarationKind::nameSpace ||
                               one.kind == DeclarationKind::enumType ||
                               one.kind == DeclarationKind::classType;
            if (!holds || one.name != name || one.inner == kNoIndex) continue;
            for (const int inner : index_.declaredIn(one.inner)) addDeclared(inner);
        }
        const asITypeInfo* const type = meanings_.engine() == nullptr
                                            ? nullptr
                                            : meanings_.engine()->GetTypeInfoByName(name.c_str());
        if (type != nullptr) addEnumValues(*type);
    }

    void addEnumValues(const asITypeInfo& type) {
        for (asUINT i = 0; i < type.GetEnumValueCount(); ++i) {
            int value = 0;
            if (const char* const name = type.GetEnumValueByIndex(i, &value))
                add({Kind::enumValue,
                     name,
                     type.GetName() + (" = " + std::to_string(value)),
                     {},
                     {},
                     false});
        }
    }

    void everything() {
        for (const int i : index_.variablesAt(offset_)) addDeclared(i);
        const int type = index_.classAt(offset_);
        if (type != kNoIndex) membersOfClass(type, type);
        for (int scope = index_.scopeAt(offset_); scope != kNoIndex;
             scope = index_.scopes()[at(scope)].parent) {
            const Scope::Kind kind = index_.scopes()[at(scope)].kind;
            if (kind == Scope::Kind::file || kind == Scope::Kind::nameSpace)
                for (const int i : index_.declaredIn(scope)) addDeclared(i);
        }
        addSnippets();
        for (const Symbol& word : languageWords())
            add({Kind::keyword, word.name, {}, {}, {}, false});
        if (meanings_.engine() != nullptr) addLibrary(*meanings_.engine());
    }

    void addLibrary(const asIScriptEngine& engine) {
        for (asUINT i = 0; i < engine.GetGlobalFunctionCount(); ++i)
            addFunction(*engine.GetGlobalFunctionByIndex(i), Kind::function);
        for (asUINT i = 0; i < engine.GetObjectTypeCount(); ++i) {
            const asITypeInfo& type = *engine.GetObjectTypeByIndex(i);
            add({Kind::classType, type.GetName(), "type", {}, {}, false});
        }
        for (asUINT i = 0; i < engine.GetEnumCount(); ++i) {
            add({Kind::enumType, engine.GetEnumByIndex(i)->GetName(), "enum", {}, {}, false});
            addEnumValues(*engine.GetEnumByIndex(i));
        }
        for (asUINT i = 0; i < engine.GetGlobalPropertyCount(); ++i) {
            const char* name = nullptr;
            int typeId = 0;
            engine.GetGlobalPropertyByIndex(i, &name, nullptr, &typeId);
            const char* const text = engine.GetTypeDeclaration(typeId);
            add({Kind::variable, name, text == nullptr ? "" : text, {}, {}, false});
        }
    }

    void addSnippets() {
        const bool inside = index_.functionAt(offset_) != kNoIndex;
        if (inside) {
            add({Kind::snippet,
                 "for",
                 "counts from 0",
                 {},
                 "for (int ${1:i} = 0; ${1:i} < ${2:count}; ${1:i}++) {\n    $0\n}",
                 true});
            return;
        }
        add({Kind::snippet,
             "class",
             "a new class",
             {},
             "class ${1:Name} {\n    ${2:int value;}\n\n    ${1:Name}() {\n        $0\n    }\n}",
             true});
        add({Kind::snippet,
             "main",
             "where a script begins",
             {},
             "int main() {\n    $0\n    return 0;\n}",
             true});
    }

    Meanings& meanings_;
    const ScopeIndex& index_;
    const Documentation& library_;
    std::size_t offset_;
    std::vector<Suggestion> found_;
    std::set<std::pair<std::string, std::string>> seen_;
};

}  // namespace

std::vector<Suggestion> suggestionsAt(Meanings& meanings, const Documentation& library,
                                      std::size_t offset) {
    return Collector(meanings, library, offset).collect();
}

}  // namespace korvant
