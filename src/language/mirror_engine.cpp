// An engine that builds what another one would build, made of the other's description.
#include <algorithm>
#include <deque>
#include <set>
#include <string>
#include <tuple>

#include "language/api_description.h"

namespace korvant {

namespace {

void nothing(asIScriptGeneric*) {}

/// Takes every parameter of a template.
void takeAll(asIScriptGeneric* call) {
    *static_cast<bool*>(call->GetAddressOfReturnLocation()) = true;
}

/// Texts in quotes of an engine whose string type is another library's.
class MirrorStrings final : public asIStringFactory {
  public:
    const void* GetStringConstant(const char* data, asUINT length) override {
        return &*texts_.emplace(data, length).first;
    }
    int ReleaseStringConstant(const void*) override { return asSUCCESS; }
    int GetRawStringData(const void* constant, char* data, asUINT* length) const override {
        const auto& text = *static_cast<const std::string*>(constant);
        if (length != nullptr) *length = static_cast<asUINT>(text.size());
        if (data != nullptr) std::copy(text.begin(), text.end(), data);
        return asSUCCESS;
    }

  private:
    std::set<std::string> texts_;
};

asIStringFactory& mirrorStrings() {
    static auto* const strings = new MirrorStrings;
    return *strings;
}

/// Addresses for global properties, each another one. Nothing reads them.
void* nextAddress() {
    static auto* const places = new std::deque<std::uint64_t>;
    places->push_back(0);
    return &places->back();
}

/// What an engine has already, by name.
class Known {
  public:
    explicit Known(const ApiDescription& api) {
        for (const ApiType& type : api.types) {
            types_.insert({type.nameSpace, nameOf(type)});
            for (const auto& function : type.behaviours) add(type, function.declaration);
            for (const auto& function : type.methods) add(type, function.declaration);
            for (const auto& property : type.properties) add(type, property.declaration);
        }
        for (const auto& function : api.functions)
            globals_.insert({function.nameSpace, function.declaration});
        for (const auto& property : api.properties)
            globals_.insert({property.nameSpace, property.declaration});
    }
    bool type(const ApiType& type) const { return types_.count({type.nameSpace, type.name}) > 0; }
    bool member(const ApiType& type, const std::string& declaration) const {
        return members_.count({type.nameSpace, type.name, declaration}) > 0;
    }
    bool global(const std::string& nameSpace, const std::string& declaration) const {
        return globals_.count({nameSpace, declaration}) > 0;
    }

  private:
    /// A type's own function types may have the names of others.
    static std::string nameOf(const ApiType& type) {
        const bool owned = type.kind == ApiType::Kind::functionType && !type.subTypes.empty();
        return (owned ? type.subTypes[0] + "::" : "") + type.name;
    }
    void add(const ApiType& type, const std::string& declaration) {
        members_.insert({type.nameSpace, type.name, declaration});
    }

    std::set<std::pair<std::string, std::string>> types_, globals_;
    std::set<std::tuple<std::string, std::string, std::string>> members_;
};

class Mirror {
  public:
    Mirror(const ApiDescription& api, asIScriptEngine& engine)
        : api_(api), engine_(engine), known_(describeEngine(engine)) {}

    int make() {
        for (const auto& [property, value] : api_.settings)
            engine_.SetEngineProperty(static_cast<asEEngineProp>(property),
                                      static_cast<asPWORD>(value));
        for (const ApiType& type : api_.types) declareType(type);
        for (const ApiType& type : api_.types)
            if (type.kind == ApiType::Kind::functionType && !known_.type(type))
                in(type.nameSpace, type.accessMask,
                   [&] { return engine_.RegisterFuncdef(type.declaration.c_str()); });
        registerStrings();
        for (const ApiType& type : api_.types) fillType(type);
        registerGlobals();
        engine_.SetDefaultNamespace("");
        engine_.SetDefaultAccessMask(~0u);
        return worst_;
    }

  private:
    template <class Register>
    void in(const std::string& nameSpace, std::uint32_t mask, Register registerIt) {
        engine_.SetDefaultNamespace(nameSpace.c_str());
        engine_.SetDefaultAccessMask(mask);
        const int result = registerIt();
        if (result < 0 && worst_ == 0) worst_ = result;
    }

    static std::string registeredName(const ApiType& type) {
        std::string name = type.name;
        for (std::size_t i = 0; i < type.subTypes.size(); ++i)
            name += (i == 0 ? "<class " : ",class ") + type.subTypes[i];
        return name + (type.subTypes.empty() ? "" : ">");
    }

    static std::string usedName(const ApiType& type) {
        std::string name = type.name;
        for (std::size_t i = 0; i < type.subTypes.size(); ++i)
            name += (i == 0 ? "<" : ",") + type.subTypes[i];
        return name + (type.subTypes.empty() ? "" : ">");
    }

    void declareType(const ApiType& type) {
        if (known_.type(type) || type.kind == ApiType::Kind::functionType) return;
        in(type.nameSpace, type.accessMask, [&]() -> int {
            switch (type.kind) {
                case ApiType::Kind::enumeration:
                    return declareEnum(type);
                case ApiType::Kind::alias:
                    return engine_.RegisterTypedef(type.name.c_str(), type.declaration.c_str());
                case ApiType::Kind::interface:
                    return engine_.RegisterInterface(type.name.c_str());
                default:
                    return engine_.RegisterObjectType(registeredName(type).c_str(),
                                                      static_cast<int>(type.size),
                                                      static_cast<asQWORD>(type.flags));
            }
        });
    }

    int declareEnum(const ApiType& type) {
        int worst = engine_.RegisterEnum(type.name.c_str());
        for (const auto& [name, value] : type.values)
            worst =
                std::min(worst, engine_.RegisterEnumValue(type.name.c_str(), name.c_str(), value));
        return std::min(worst, 0);
    }

    void registerStrings() {
        if (api_.stringType.empty() || engine_.GetStringFactoryReturnTypeId() >= 0) return;
        in("", ~0u, [&] {
            return engine_.RegisterStringFactory(api_.stringType.c_str(), &mirrorStrings());
        });
        if (!api_.defaultArray.empty() && engine_.GetDefaultArrayTypeId() < 0)
            in("", ~0u, [&] {
                return engine_.RegisterDefaultArrayType((api_.defaultArray + "<T>").c_str());
            });
    }

    void fillType(const ApiType& type) {
        const std::string name = usedName(type);
        for (const ApiFunction& behaviour : type.behaviours)
            if (!known_.member(type, behaviour.declaration))
                in(type.nameSpace, behaviour.accessMask,
                   [&] { return registerBehaviour(name, behaviour); });
        for (const ApiFunction& method : type.methods)
            if (!known_.member(type, method.declaration))
                in(type.nameSpace, method.accessMask,
                   [&] { return registerMethod(type, name, method); });
        for (const ApiProperty& property : type.properties)
            if (!known_.member(type, property.declaration))
                in(type.nameSpace, property.accessMask, [&] {
                    return engine_.RegisterObjectProperty(
                        name.c_str(), property.declaration.c_str(), property.offset,
                        property.compositeOffset, property.compositeIndirect);
                });
    }

    int registerBehaviour(const std::string& type, const ApiFunction& behaviour) {
        const auto native = behaviour.behaviour == asBEHAVE_TEMPLATE_CALLBACK ? takeAll : nothing;
        return engine_.RegisterObjectBehaviour(
            type.c_str(), static_cast<asEBehaviours>(behaviour.behaviour),
            behaviour.declaration.c_str(), asFUNCTION(native), asCALL_GENERIC);
    }

    int registerMethod(const ApiType& type, const std::string& name, const ApiFunction& method) {
        if (type.kind == ApiType::Kind::interface)
            return engine_.RegisterInterfaceMethod(name.c_str(), method.declaration.c_str());
        return engine_.RegisterObjectMethod(name.c_str(), method.declaration.c_str(),
                                            asFUNCTION(nothing), asCALL_GENERIC);
    }

    void registerGlobals() {
        for (const ApiFunction& function : api_.functions)
            if (!known_.global(function.nameSpace, function.declaration))
                in(function.nameSpace, function.accessMask, [&] {
                    return engine_.RegisterGlobalFunction(function.declaration.c_str(),
                                                          asFUNCTION(nothing), asCALL_GENERIC);
                });
        for (const ApiProperty& property : api_.properties)
            if (!known_.global(property.nameSpace, property.declaration))
                in(property.nameSpace, property.accessMask, [&] {
                    return engine_.RegisterGlobalProperty(property.declaration.c_str(),
                                                          nextAddress());
                });
    }

    const ApiDescription& api_;
    asIScriptEngine& engine_;
    const Known known_;
    int worst_ = 0;
};

}  // namespace

int mirrorEngine(const ApiDescription& api, asIScriptEngine& engine) {
    return Mirror(api, engine).make();
}

}  // namespace korvant
