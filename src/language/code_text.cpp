// The code of a module as texts that can be compared.
#include <algorithm>
#include <cstring>

#include "language/rename.h"

namespace korvant {

namespace {

class CodeWriter {
  public:
    CodeWriter(asIScriptModule& module, const std::string& oldName, const std::string& newName)
        : module_(module), engine_(*module.GetEngine()), old_(oldName), new_(newName) {
        for (asUINT i = 0; i < module_.GetGlobalVarCount(); ++i)
            globals_.push_back(module_.GetAddressOfGlobalVar(i));
    }

    std::vector<std::string> write() {
        for (asUINT i = 0; i < module_.GetFunctionCount(); ++i) add(module_.GetFunctionByIndex(i));
        for (asUINT i = 0; i < module_.GetGlobalVarCount(); ++i)
            texts_.push_back(neutral(module_.GetGlobalVarDeclaration(i, true)));
        for (asUINT i = 0; i < module_.GetObjectTypeCount(); ++i)
            addType(*module_.GetObjectTypeByIndex(i));
        return std::move(texts_);
    }

  private:
    bool isRenamed(std::string_view word) const { return word == old_ || word == new_; }

    /// Words that are the old or the new name become one sign, in the names of accessors too.
    std::string neutral(const char* text) const {
        std::string result;
        const std::string_view all = text == nullptr ? "" : text;
        for (std::size_t i = 0; i < all.size();) {
            std::size_t end = i;
            while (end < all.size() && isWordByte(all[end])) ++end;
            const std::string_view word = all.substr(i, end - i);
            const bool accessor = word.starts_with("get_") || word.starts_with("set_");
            if (word.empty())
                result += all[i++];
            else if (accessor && isRenamed(word.substr(4)))
                result.append(word.substr(0, 4)) += '?';
            else
                result += isRenamed(word) ? "?" : word;
            i = std::max(i, end);
        }
        return result;
    }

    void addType(asITypeInfo& type) {
        texts_.push_back("type " + neutral(type.GetName()));
        for (asUINT i = 0; i < type.GetPropertyCount(); ++i)
            texts_.push_back(neutral(type.GetPropertyDeclaration(i)));
        for (asUINT i = 0; i < type.GetMethodCount(); ++i) add(type.GetMethodByIndex(i, false));
        for (asUINT i = 0; i < type.GetFactoryCount(); ++i) add(type.GetFactoryByIndex(i));
        for (asUINT i = 0; i < type.GetBehaviourCount(); ++i) {
            asEBehaviours behaviour{};
            add(type.GetBehaviourByIndex(i, &behaviour));
        }
    }

    void add(asIScriptFunction* function) {
        if (function == nullptr) return;
        asUINT length = 0;
        const asDWORD* const code = function->GetByteCode(&length);
        std::string text = neutral(function->GetDeclaration(true, true, false)) + "\n";
        for (asUINT i = 0; code != nullptr && i < length;) i += instruction(code + i, text);
        texts_.push_back(std::move(text));
    }

    std::string functionText(int id) const {
        const asIScriptFunction* const called = engine_.GetFunctionById(id);
        return called == nullptr ? "-" : neutral(called->GetDeclaration(true, true, false));
    }

    std::string typeText(const void* pointer) const {
        const auto* const type = static_cast<const asITypeInfo*>(pointer);
        return type == nullptr ? "-" : neutral(type->GetName());
    }

    /// A global variable by its number; of anything else nothing is known but that it is no such.
    std::string globalText(const void* address) const {
        const auto found = std::find(globals_.begin(), globals_.end(), address);
        return found == globals_.end() ? "constant"
                                       : "global " + std::to_string(found - globals_.begin());
    }

    static const void* pointerAt(const asDWORD* code) {
        const void* pointer = nullptr;
        std::memcpy(&pointer, code, sizeof pointer);
        return pointer;
    }

    std::string typeIdText(asDWORD id) const {
        const char* const text = engine_.GetTypeDeclaration(static_cast<int>(id), true);
        return text == nullptr ? std::to_string(id) : neutral(text);
    }

    /// Its length in words.
    asUINT instruction(const asDWORD* code, std::string& text) const {
        const auto operation = static_cast<asEBCInstr>(*reinterpret_cast<const asBYTE*>(code));
        const auto length = static_cast<asUINT>(asBCTypeSize[asBCInfo[operation].type]);
        text += std::string(asBCInfo[operation].name) + " " + std::to_string(code[0]);
        if (!addNamed(operation, code, text))
            for (asUINT i = 1; i < length; ++i) text += " " + std::to_string(code[i]);
        text += '\n';
        return length;
    }

    /// Operands that are addresses and numbers of the engine, as names; false for none.
    bool addNamed(asEBCInstr operation, const asDWORD* code, std::string& text) const {
        switch (operation) {
            case asBC_CALL:
            case asBC_CALLSYS:
            case asBC_CALLINTF:
            case asBC_CALLBND:
            case asBC_Thiscall1:
                text += " " + functionText(static_cast<int>(code[1]));
                return true;
            case asBC_ALLOC:
                text += " " + typeText(pointerAt(code + 1)) + " " +
                        functionText(static_cast<int>(code[1 + AS_PTR_SIZE]));
                return true;
            case asBC_FREE:
            case asBC_REFCPY:
            case asBC_RefCpyV:
            case asBC_OBJTYPE:
                text += " " + typeText(pointerAt(code + 1));
                return true;
            case asBC_FuncPtr: {
                const auto* const called =
                    static_cast<const asIScriptFunction*>(pointerAt(code + 1));
                text += " " + (called == nullptr ? "-" : neutral(called->GetDeclaration()));
                return true;
            }
            case asBC_SetG4:
                text += " " + std::to_string(code[1 + AS_PTR_SIZE]);
                [[fallthrough]];
            case asBC_PGA:
            case asBC_LDG:
            case asBC_PshGPtr:
            case asBC_PshG4:
            case asBC_CpyVtoG4:
            case asBC_CpyGtoV4:
            case asBC_LdGRdR4:
                text += " " + globalText(pointerAt(code + 1));
                return true;
            default:
                return operation == asBC_JitEntry || addTypeId(operation, code, text);
        }
    }

    bool addTypeId(asEBCInstr operation, const asDWORD* code, std::string& text) const {
        switch (operation) {
            case asBC_TYPEID:
            case asBC_Cast:
            case asBC_ADDSi:
            case asBC_LoadThisR:
            case asBC_LoadRObjR:
            case asBC_LoadVObjR:
            case asBC_COPY:
                text += " " + typeIdText(operation == asBC_LoadRObjR || operation == asBC_LoadVObjR
                                             ? code[2]
                                             : code[1]);
                if (operation == asBC_LoadRObjR || operation == asBC_LoadVObjR)
                    text += " " + std::to_string(code[1]);
                return true;
            case asBC_SetListType:
                text += " " + std::to_string(code[1]) + " " + typeIdText(code[2]);
                return true;
            default:
                return false;
        }
    }

    asIScriptModule& module_;
    asIScriptEngine& engine_;
    const std::string& old_;
    const std::string& new_;
    std::vector<const void*> globals_;
    std::vector<std::string> texts_;
};

}  // namespace

std::vector<std::string> codeOf(asIScriptModule& module, const std::string& oldName,
                                const std::string& newName) {
    return CodeWriter(module, oldName, newName).write();
}

}  // namespace korvant
