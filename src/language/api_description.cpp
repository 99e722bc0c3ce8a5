#include "language/api_description.h"

#include <algorithm>
#include <string_view>

namespace korvant {

namespace {

std::string textOf(const char* text) {
    return text != nullptr ? text : "";
}

/// While it lives, types of the default array are written as templates, which every registration
/// understands.
class ExpandedArrays {
  public:
    explicit ExpandedArrays(asIScriptEngine& engine)
        : engine_(engine), before_(engine.GetEngineProperty(asEP_EXPAND_DEF_ARRAY_TO_TMPL)) {
        engine_.SetEngineProperty(asEP_EXPAND_DEF_ARRAY_TO_TMPL, 1);
    }
    ~ExpandedArrays() { engine_.SetEngineProperty(asEP_EXPAND_DEF_ARRAY_TO_TMPL, before_); }
    ExpandedArrays(const ExpandedArrays&) = delete;
    ExpandedArrays& operator=(const ExpandedArrays&) = delete;

  private:
    asIScriptEngine& engine_;
    asPWORD before_;
};

/// Behaviours have names of the engine's own ("$beh0", "$list", "~T", the type's); a registration
/// takes any name, and a result even where there is none.
std::string withPlainName(const std::string& declaration) {
    const auto open = declaration.find('(');
    if (open == std::string::npos) return declaration;
    const auto blank = declaration.rfind(' ', open);
    const std::string result = blank == std::string::npos ? "void" : declaration.substr(0, blank);
    return result + " f" + declaration.substr(open);
}

ApiFunction functionOf(const asIScriptFunction& function, int behaviour = -1) {
    ApiFunction result;
    result.declaration = textOf(function.GetDeclaration(false, true, true));
    if (behaviour >= 0) result.declaration = withPlainName(result.declaration);
    if (function.IsExplicit()) result.declaration += " explicit";
    if (function.IsProperty()) result.declaration += " property";
    result.accessMask = function.GetAccessMask();
    result.behaviour = behaviour;
    return result;
}

class Describer {
  public:
    explicit Describer(asIScriptEngine& engine) : engine_(engine) {}

    ApiDescription read() {
        api_.engineVersion = textOf(asGetLibraryVersion());
        readSettings();
        const ExpandedArrays arrays(engine_);
        api_.stringType = nameOfType(engine_.GetStringFactoryReturnTypeId());
        api_.defaultArray = nameOfType(engine_.GetDefaultArrayTypeId());
        api_.ownLibrary = isOwnType(engine_.GetTypeInfoByName("string"));
        readTypes();
        readFunctions();
        readProperties();
        return std::move(api_);
    }

  private:
    void readSettings() {
        for (int i = 1; i < asEP_LAST_PROPERTY; ++i)
            api_.settings[i] = engine_.GetEngineProperty(static_cast<asEEngineProp>(i));
    }

    std::string nameOfType(int typeId) const {
        const asITypeInfo* const type = typeId >= 0 ? engine_.GetTypeInfoById(typeId) : nullptr;
        return type != nullptr ? textOf(type->GetName()) : "";
    }

    ApiType begin(ApiType::Kind kind, const asITypeInfo& type) const {
        ApiType result;
        result.kind = kind;
        result.name = textOf(type.GetName());
        result.nameSpace = textOf(type.GetNamespace());
        result.accessMask = type.GetAccessMask();
        return result;
    }

    void readTypes() {
        for (asUINT i = 0; i < engine_.GetEnumCount(); ++i) readEnum(*engine_.GetEnumByIndex(i));
        for (asUINT i = 0; i < engine_.GetTypedefCount(); ++i) {
            const asITypeInfo& type = *engine_.GetTypedefByIndex(i);
            ApiType result = begin(ApiType::Kind::alias, type);
            result.declaration = textOf(engine_.GetTypeDeclaration(type.GetTypedefTypeId(), true));
            api_.types.push_back(std::move(result));
        }
        for (asUINT i = 0; i < engine_.GetObjectTypeCount(); ++i)
            readObject(*engine_.GetObjectTypeByIndex(i));
        for (asUINT i = 0; i < engine_.GetFuncdefCount(); ++i)
            readFunctionType(*engine_.GetFuncdefByIndex(i));
    }

    void readEnum(const asITypeInfo& type) {
        ApiType result = begin(ApiType::Kind::enumeration, type);
        for (asUINT i = 0; i < type.GetEnumValueCount(); ++i) {
            int value = 0;
            const char* const name = type.GetEnumValueByIndex(i, &value);
            result.values.emplace_back(textOf(name), value);
        }
        api_.types.push_back(std::move(result));
    }

    void readFunctionType(const asITypeInfo& type) {
        ApiType result = begin(ApiType::Kind::functionType, type);
        // Without the object's name the engine asks for a namespace that a type's own do not have.
        const std::string found =
            textOf(type.GetFuncdefSignature()->GetDeclaration(true, true, true));
        std::string owner;
        if (const asITypeInfo* const parent = type.GetParentType()) {
            // "bool array::less(...)" is registered as "bool array<T>::less(...)".
            result.subTypes = {textOf(parent->GetName())};
            result.nameSpace = textOf(parent->GetNamespace());
            owner = ownerDeclaration(*parent) + "::";
        }
        const auto open = found.find('(');
        const auto blank = found.rfind(' ', open);
        result.declaration = found.substr(0, blank + 1) + owner + result.name + found.substr(open);
        api_.types.push_back(std::move(result));
    }

    static std::string ownerDeclaration(const asITypeInfo& type) {
        std::string text = textOf(type.GetName());
        for (asUINT i = 0; i < type.GetSubTypeCount(); ++i)
            text += (i == 0 ? "<" : ",") + textOf(type.GetSubType(i)->GetName());
        return text + (type.GetSubTypeCount() > 0 ? ">" : "");
    }

    void readObject(const asITypeInfo& type) {
        const bool interface = (type.GetFlags() & asOBJ_SCRIPT_OBJECT) != 0;
        ApiType result = begin(interface ? ApiType::Kind::interface : ApiType::Kind::object, type);
        result.flags = type.GetFlags() & asOBJ_MASK_VALID_FLAGS;
        result.size = type.GetSize();
        for (asUINT i = 0; i < type.GetSubTypeCount(); ++i)
            result.subTypes.push_back(textOf(type.GetSubType(i)->GetName()));
        if (!interface) readBehaviours(type, result);
        for (asUINT i = 0; i < type.GetMethodCount(); ++i)
            result.methods.push_back(functionOf(*type.GetMethodByIndex(i)));
        readMembers(type, result);
        api_.types.push_back(std::move(result));
    }

    static void readBehaviours(const asITypeInfo& type, ApiType& result) {
        for (asUINT i = 0; i < type.GetBehaviourCount(); ++i) {
            asEBehaviours behaviour{};
            const asIScriptFunction* const function = type.GetBehaviourByIndex(i, &behaviour);
            result.behaviours.push_back(functionOf(*function, behaviour));
        }
        for (asUINT i = 0; i < type.GetFactoryCount(); ++i)
            result.behaviours.push_back(functionOf(*type.GetFactoryByIndex(i), asBEHAVE_FACTORY));
    }

    static void readMembers(const asITypeInfo& type, ApiType& result) {
        for (asUINT i = 0; i < type.GetPropertyCount(); ++i) {
            ApiProperty property;
            asDWORD mask = 0;
            type.GetProperty(i, nullptr, nullptr, nullptr, nullptr, &property.offset, nullptr,
                             &mask, &property.compositeOffset, &property.compositeIndirect);
            property.accessMask = mask;
            property.declaration = textOf(type.GetPropertyDeclaration(i, true));
            result.properties.push_back(std::move(property));
        }
    }

    void readFunctions() {
        for (asUINT i = 0; i < engine_.GetGlobalFunctionCount(); ++i) {
            const asIScriptFunction& function = *engine_.GetGlobalFunctionByIndex(i);
            ApiFunction result = functionOf(function);
            result.nameSpace = textOf(function.GetNamespace());
            api_.functions.push_back(std::move(result));
        }
        for (ApiFunction& function : api_.functions) unqualify(function);
    }

    /// The name itself stands without the namespace that it is registered in.
    static void unqualify(ApiFunction& function) {
        if (function.nameSpace.empty()) return;
        const auto open = function.declaration.find('(');
        const std::string prefix = function.nameSpace + "::";
        const auto found = function.declaration.rfind(prefix, open);
        if (found != std::string::npos &&
            function.declaration.find_first_of(" (", found + prefix.size()) == open)
            function.declaration.erase(found, prefix.size());
    }

    void readProperties() {
        for (asUINT i = 0; i < engine_.GetGlobalPropertyCount(); ++i) {
            const char *name = nullptr, *nameSpace = nullptr;
            int typeId = 0;
            bool constant = false;
            asDWORD mask = 0;
            engine_.GetGlobalPropertyByIndex(i, &name, &nameSpace, &typeId, &constant, nullptr,
                                             nullptr, &mask);
            const std::string type = textOf(engine_.GetTypeDeclaration(typeId, true));
            ApiProperty property;
            property.declaration = (constant ? "const " : "") + type + " " + textOf(name);
            property.nameSpace = textOf(nameSpace);
            property.accessMask = mask;
            api_.properties.push_back(std::move(property));
        }
    }

    asIScriptEngine& engine_;
    ApiDescription api_;
};

}  // namespace

ApiDescription describeEngine(asIScriptEngine& engine) {
    return Describer(engine).read();
}

}  // namespace korvant
