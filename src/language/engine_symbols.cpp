#include <map>

#include "language/symbols.h"
#include "language/tokens.h"

namespace korvant {

namespace {

/// Engines lay declarations out in their own way.
std::string withoutBlanks(std::string_view text) {
    std::string result;
    for (const char byte : text)
        if (byte != ' ') result += byte;
    return result;
}

/// Help by type and declaration.
std::map<std::string, const char*> helpTexts(std::span<const FunctionFamily> families) {
    std::map<std::string, const char*> texts;
    for (const FunctionFamily& family : families)
        for (const FunctionRow& row : family.rows)
            texts.emplace((family.objectType ? family.objectType : "") + std::string("::") +
                              withoutBlanks(row.declaration),
                          row.help);
    return texts;
}

class EngineReader {
  public:
    EngineReader(asIScriptEngine& engine, std::span<const FunctionFamily> families)
        : engine_(engine), help_(helpTexts(families)) {}

    std::vector<Symbol> read() {
        for (asUINT i = 0; i < engine_.GetGlobalFunctionCount(); ++i)
            addFunction(engine_.GetGlobalFunctionByIndex(i), {});
        for (asUINT i = 0; i < engine_.GetObjectTypeCount(); ++i)
            addType(engine_.GetObjectTypeByIndex(i));
        for (asUINT i = 0; i < engine_.GetEnumCount(); ++i) addEnum(engine_.GetEnumByIndex(i));
        for (asUINT i = 0; i < engine_.GetGlobalPropertyCount(); ++i) addGlobal(i);
        return std::move(symbols_);
    }

  private:
    std::string typeName(int typeId) const {
        const char* text = engine_.GetTypeDeclaration(typeId, false);
        return text ? plainType(text) : "";
    }

    void addFunction(const asIScriptFunction* function, const std::string& owner) {
        if (!function) return;
        const std::string name = function->GetName();
        // Operators are not written by name.
        if (!owner.empty() && isOperatorName(name)) return;
        std::string declaration = function->GetDeclaration(false, false, true);
        const auto help = help_.find(owner + "::" + withoutBlanks(declaration));
        symbols_.push_back({Symbol::Kind::function, name, typeName(function->GetReturnTypeId()),
                            owner, std::move(declaration), -1,
                            help == help_.end() ? "" : help->second});
    }

    void addType(const asITypeInfo* type) {
        if (!type) return;
        const std::string name = type->GetName();
        symbols_.push_back({Symbol::Kind::type, name, name, {}, {}, -1, {}});
        for (asUINT i = 0; i < type->GetMethodCount(); ++i)
            addFunction(type->GetMethodByIndex(i), name);
        for (asUINT i = 0; i < type->GetPropertyCount(); ++i) addProperty(*type, i);
    }

    void addProperty(const asITypeInfo& type, asUINT index) {
        const char* name = nullptr;
        int typeId = 0;
        if (type.GetProperty(index, &name, &typeId) < 0 || !name) return;
        symbols_.push_back(
            {Symbol::Kind::variable, name, typeName(typeId), type.GetName(), {}, -1, {}});
    }

    void addEnum(const asITypeInfo* type) {
        if (!type) return;
        symbols_.push_back({Symbol::Kind::type, type->GetName(), "int", {}, {}, -1, {}});
        for (asUINT i = 0; i < type->GetEnumValueCount(); ++i) {
            int value = 0;
            if (const char* name = type->GetEnumValueByIndex(i, &value))
                symbols_.push_back({Symbol::Kind::value, name, type->GetName(), {}, {}, -1, {}});
        }
    }

    void addGlobal(asUINT index) {
        const char* name = nullptr;
        int typeId = 0;
        if (engine_.GetGlobalPropertyByIndex(index, &name, nullptr, &typeId) < 0 || !name) return;
        symbols_.push_back({Symbol::Kind::variable, name, typeName(typeId), {}, {}, -1, {}});
    }

    asIScriptEngine& engine_;
    std::map<std::string, const char*> help_;
    std::vector<Symbol> symbols_;
};

}  // namespace

std::vector<Symbol> engineSymbols(asIScriptEngine* engine,
                                  std::span<const FunctionFamily> families) {
    return engine ? EngineReader(*engine, families).read() : std::vector<Symbol>();
}

}  // namespace korvant
