#include "language/predefined.h"

#include "language/documentation.h"

namespace korvant {

namespace {

class Writer {
  public:
    Writer(asIScriptEngine& engine, std::span<const FunctionFamily> families)
        : engine_(engine), library_(families) {}

    std::string write() {
        for (asUINT i = 0; i < engine_.GetEnumCount(); ++i) addEnum(*engine_.GetEnumByIndex(i));
        for (asUINT i = 0; i < engine_.GetFuncdefCount(); ++i)
            line("", std::string("funcdef ") +
                         engine_.GetFuncdefByIndex(i)->GetFuncdefSignature()->GetDeclaration(
                             false, false, true) +
                         ";");
        for (asUINT i = 0; i < engine_.GetObjectTypeCount(); ++i)
            addType(*engine_.GetObjectTypeByIndex(i));
        for (asUINT i = 0; i < engine_.GetGlobalPropertyCount(); ++i) addGlobal(i);
        for (asUINT i = 0; i < engine_.GetGlobalFunctionCount(); ++i)
            addFunction(*engine_.GetGlobalFunctionByIndex(i), "");
        return std::move(text_);
    }

  private:
    void line(const char* indent, const std::string& content) { text_ += indent + content + "\n"; }

    void addFunction(const asIScriptFunction& function, const char* indent) {
        const std::string help = library_.of(function).help;
        if (!help.empty()) line(indent, "// " + help);
        const char* const space = function.GetNamespace();
        const bool inside = *indent == 0 && space != nullptr && *space != 0;
        const std::string declaration = function.GetDeclaration(false, false, true);
        line(indent, inside ? std::string("namespace ") + space + " { " + declaration + "; }"
                            : declaration + ";");
    }

    void addEnum(const asITypeInfo& type) {
        line("", std::string("enum ") + type.GetName() + " {");
        for (asUINT i = 0; i < type.GetEnumValueCount(); ++i) {
            int value = 0;
            const char* const name = type.GetEnumValueByIndex(i, &value);
            line("    ", std::string(name) + " = " + std::to_string(value) + ",");
        }
        line("", "}");
    }

    void addType(const asITypeInfo& type) {
        std::string head = std::string("class ") + type.GetName();
        for (asUINT i = 0; i < type.GetSubTypeCount(); ++i)
            head += (i == 0 ? "<" : ", ") + std::string("T") + (i == 0 ? "" : std::to_string(i)) +
                    (i + 1 == type.GetSubTypeCount() ? ">" : "");
        line("", head + " {");
        for (asUINT i = 0; i < type.GetBehaviourCount(); ++i) {
            asEBehaviours behaviour{};
            const asIScriptFunction* const function = type.GetBehaviourByIndex(i, &behaviour);
            if (behaviour == asBEHAVE_CONSTRUCT) addFunction(*function, "    ");
        }
        for (asUINT i = 0; i < type.GetPropertyCount(); ++i)
            line("    ", std::string(type.GetPropertyDeclaration(i)) + ";");
        for (asUINT i = 0; i < type.GetMethodCount(); ++i)
            addFunction(*type.GetMethodByIndex(i), "    ");
        line("", "}");
    }

    void addGlobal(asUINT index) {
        const char* name = nullptr;
        int typeId = 0;
        bool constant = false;
        engine_.GetGlobalPropertyByIndex(index, &name, nullptr, &typeId, &constant);
        line("", std::string(constant ? "const " : "") + engine_.GetTypeDeclaration(typeId) + " " +
                     name + ";");
    }

    asIScriptEngine& engine_;
    Documentation library_;
    std::string text_;
};

}  // namespace

std::string predefinedText(asIScriptEngine& engine, std::span<const FunctionFamily> families) {
    return Writer(engine, families).write();
}

}  // namespace korvant
