#include "host/engine/string_literals.h"

#include <cstring>
#include <memory>
#include <string_view>
#include <unordered_map>

#include "host/engine/script_string.h"

namespace korvant {

namespace {

/// The texts of all compiled modules, each once. A key lies in the object of its entry, whose text
/// nobody changes.
class LiteralTable final : public asIStringFactory {
  public:
    const void* GetStringConstant(const char* data, asUINT length) override {
        try {
            return share(std::string_view(data, length));
        } catch (...) {
            return nullptr;
        }
    }

    int ReleaseStringConstant(const void* constant) override {
        const auto* string = static_cast<const ScriptString*>(constant);
        const auto found = string != nullptr ? uses_.find(string->text) : uses_.end();
        if (found == uses_.end()) return asERROR;
        if (--found->second.count == 0) {
            uses_.erase(found);
            ScriptString::destroyConstant(string);
        }
        return asSUCCESS;
    }

    int GetRawStringData(const void* constant, char* data, asUINT* length) const override {
        if (constant == nullptr) return asERROR;
        const std::string& text = static_cast<const ScriptString*>(constant)->text;
        if (length != nullptr) *length = static_cast<asUINT>(text.size());
        if (data != nullptr) std::memcpy(data, text.data(), text.size());
        return asSUCCESS;
    }

  private:
    struct Use {
        ScriptString* string;
        std::size_t count;
    };

    ScriptString* share(std::string_view text) {
        if (const auto found = uses_.find(text); found != uses_.end()) {
            ++found->second.count;
            return found->second.string;
        }
        ScriptString* const string = ScriptString::createConstant(text);
        if (string == nullptr) return nullptr;
        std::unique_ptr<ScriptString, void (*)(const ScriptString*)> made(
            string, [](const ScriptString* lost) { ScriptString::destroyConstant(lost); });
        uses_.emplace(string->text, Use{string, 1});
        return made.release();
    }

    std::unordered_map<std::string_view, Use> uses_;
};

}  // namespace

asIStringFactory& stringLiterals() {
    static auto* const table = new LiteralTable;
    return *table;
}

}  // namespace korvant
