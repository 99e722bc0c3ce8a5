#include "language/predefined.h"

#include <algorithm>

#include "language/documentation.h"

namespace korvant {

namespace {

class Writer {
  public:
    Writer(asIScriptEngine& engine, std::span<const FunctionFamily> families)
        : engine_(engine), library_(families) {}

    std::string write() {
        for (asUINT i = 0; i < engine_.GetEnumCount(); ++i) addEnum(*engine_.GetEnumByIndex(i));
        for (asUINT i = 0; i < engine_.GetTypedefCount(); ++i)
            addTypedef(*engine_.GetTypedefByIndex(i));
        for (asUINT i = 0; i < engine_.GetFuncdefCount(); ++i)
            if (engine_.GetFuncdefByIndex(i)->GetParentType() == nullptr)
                addFuncdef(*engine_.GetFuncdefByIndex(i));
        for (asUINT i = 0; i < engine_.GetObjectTypeCount(); ++i)
            addType(*engine_.GetObjectTypeByIndex(i));
        for (asUINT i = 0; i < engine_.GetGlobalPropertyCount(); ++i) addGlobal(i);
        for (asUINT i = 0; i < engine_.GetGlobalFunctionCount(); ++i) {
            const asIScriptFunction& function = *engine_.GetGlobalFunctionByIndex(i);
            enter(function.GetNamespace());
            addFunction(function, function.GetDeclaration(false, false, true));
        }
        enter("");
        return std::move(text_);
    }

  private:
    void line(const std::string& content) {
        text_.append(indent_ * 4, ' ').append(content).append("\n");
    }

    void open(const std::string& head) {
        line(head + " {");
        ++indent_;
    }

    void close() {
        --indent_;
        line("}");
    }

    /// What follows stands in this namespace.
    void enter(const char* name) {
        const std::string wanted = name == nullptr ? "" : name;
        if (wanted == space_) return;
        if (!space_.empty()) close();
        space_ = wanted;
        if (!space_.empty()) open("namespace " + space_);
    }

    void addFunction(const asIScriptFunction& function, const std::string& declaration) {
        const std::string help = library_.of(function).help;
        if (!help.empty()) line("// " + help);
        line(declaration + (function.IsProperty() ? " property" : "") +
             (function.IsExplicit() ? " explicit" : "") + ";");
    }

    void addEnum(const asITypeInfo& type) {
        enter(type.GetNamespace());
        open(std::string("enum ") + type.GetName());
        for (asUINT i = 0; i < type.GetEnumValueCount(); ++i) {
            int value = 0;
            const char* const name = type.GetEnumValueByIndex(i, &value);
            line(std::string(name) + " = " + std::to_string(value) + ",");
        }
        close();
    }

    void addTypedef(const asITypeInfo& type) {
        enter(type.GetNamespace());
        line(std::string("typedef ") + engine_.GetTypeDeclaration(type.GetTypedefTypeId()) + " " +
             type.GetName() + ";");
    }

    void addFuncdef(const asITypeInfo& type) {
        if (type.GetParentType() == nullptr) enter(type.GetNamespace());
        line(std::string("funcdef ") +
             type.GetFuncdefSignature()->GetDeclaration(false, false, true) + ";");
    }

    /// Constructors have the name of their type; of a template's the engine hides the first
    /// parameter itself.
    void addConstructor(const asITypeInfo& type, const asIScriptFunction& function) {
        const std::string declaration = function.GetDeclaration(false, false, true);
        std::string parameters =
            declaration.substr(std::min(declaration.find('('), declaration.size()));
        if (type.GetSubTypeCount() > 0 && parameters.starts_with("(int&in")) {
            const std::size_t next = parameters.find_first_of(",)");
            parameters = "(" + parameters.substr(next + (parameters[next] == ',' ? 2 : 0));
        }
        addFunction(function, type.GetName() + parameters);
    }

    std::string headOf(const asITypeInfo& type) const {
        const bool interface = (type.GetFlags() & asOBJ_SCRIPT_OBJECT) != 0;
        std::string head = std::string(interface ? "interface " : "class ") + type.GetName();
        for (asUINT i = 0; i < type.GetSubTypeCount(); ++i) {
            const char* const name = engine_.GetTypeDeclaration(type.GetSubTypeId(i));
            head += (i == 0 ? "<" : ", ") + std::string(name == nullptr ? "T" : name);
        }
        return type.GetSubTypeCount() > 0 ? head + ">" : head;
    }

    void addType(const asITypeInfo& type) {
        enter(type.GetNamespace());
        open(headOf(type));
        for (asUINT i = 0; i < type.GetChildFuncdefCount(); ++i)
            addFuncdef(*type.GetChildFuncdef(i));
        for (asUINT i = 0; i < type.GetFactoryCount(); ++i)
            addConstructor(type, *type.GetFactoryByIndex(i));
        for (asUINT i = 0; i < type.GetBehaviourCount(); ++i) {
            asEBehaviours behaviour{};
            const asIScriptFunction* const function = type.GetBehaviourByIndex(i, &behaviour);
            if (behaviour == asBEHAVE_CONSTRUCT) addConstructor(type, *function);
        }
        for (asUINT i = 0; i < type.GetPropertyCount(); ++i)
            line(std::string(type.GetPropertyDeclaration(i)) + ";");
        for (asUINT i = 0; i < type.GetMethodCount(); ++i) {
            const asIScriptFunction& method = *type.GetMethodByIndex(i);
            addFunction(method, method.GetDeclaration(false, false, true));
        }
        close();
    }

    void addGlobal(asUINT index) {
        const char* name = nullptr;
        const char* space = nullptr;
        int typeId = 0;
        bool constant = false;
        engine_.GetGlobalPropertyByIndex(index, &name, &space, &typeId, &constant);
        enter(space);
        line(std::string(constant ? "const " : "") + engine_.GetTypeDeclaration(typeId) + " " +
             name + ";");
    }

    asIScriptEngine& engine_;
    Documentation library_;
    std::string text_;
    std::string space_;  ///< the namespace that is open
    std::size_t indent_ = 0;
};

}  // namespace

std::string predefinedText(asIScriptEngine& engine, std::span<const FunctionFamily> families) {
    return Writer(engine, families).write();
}

}  // namespace korvant
