#include "editor/symbols.h"

namespace korvant {

namespace {

class EngineReader {
  public:
    explicit EngineReader(asIScriptEngine& engine) : engine_(engine) {}

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
        if (!owner.empty() && name.starts_with("op")) return;
        symbols_.push_back({Symbol::Kind::function, name, typeName(function->GetReturnTypeId()),
                            owner, function->GetDeclaration(false, false, true), -1});
    }

    void addType(const asITypeInfo* type) {
        if (!type) return;
        const std::string name = type->GetName();
        symbols_.push_back({Symbol::Kind::type, name, name, {}, {}, -1});
        for (asUINT i = 0; i < type->GetMethodCount(); ++i)
            addFunction(type->GetMethodByIndex(i), name);
        for (asUINT i = 0; i < type->GetPropertyCount(); ++i) addProperty(*type, i);
    }

    void addProperty(const asITypeInfo& type, asUINT index) {
        const char* name = nullptr;
        int typeId = 0;
        if (type.GetProperty(index, &name, &typeId) < 0 || !name) return;
        symbols_.push_back(
            {Symbol::Kind::variable, name, typeName(typeId), type.GetName(), {}, -1});
    }

    void addEnum(const asITypeInfo* type) {
        if (!type) return;
        symbols_.push_back({Symbol::Kind::type, type->GetName(), "int", {}, {}, -1});
        for (asUINT i = 0; i < type->GetEnumValueCount(); ++i) {
            int value = 0;
            if (const char* name = type->GetEnumValueByIndex(i, &value))
                symbols_.push_back({Symbol::Kind::value, name, type->GetName(), {}, {}, -1});
        }
    }

    void addGlobal(asUINT index) {
        const char* name = nullptr;
        int typeId = 0;
        if (engine_.GetGlobalPropertyByIndex(index, &name, nullptr, &typeId) < 0 || !name) return;
        symbols_.push_back({Symbol::Kind::variable, name, typeName(typeId), {}, {}, -1});
    }

    asIScriptEngine& engine_;
    std::vector<Symbol> symbols_;
};

}  // namespace

std::vector<Symbol> engineSymbols(asIScriptEngine* engine) {
    return engine ? EngineReader(*engine).read() : std::vector<Symbol>();
}

}  // namespace korvant
