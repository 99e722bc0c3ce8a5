#include "language/oracle.h"

#include <algorithm>
#include <set>

#include "base/system/clock.h"
#include "host/engine/engine_memory.h"
#include "host/run/script_session.h"
#include "host/scan/source_scan.h"

namespace korvant {

namespace {

constexpr int kDeepest = 16;
constexpr int kLongestChain = 64;  ///< members behind each other, "a.b.c"

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

}  // namespace

OracleEngine::OracleEngine(asIScriptEngine* engine, Maker another)
    : engine_(engine), another_(std::move(another)) {
    prepare();
}

OracleEngine::~OracleEngine() {
    if (engine_ == nullptr) return;
    engine_->ClearMessageCallback();
    engine_->ShutDownAndRelease();
}

void OracleEngine::prepare() {
    if (engine_ == nullptr) return;
    engine_->SetMessageCallback(asFUNCTION(message), this, asCALL_CDECL);
    engine_->SetEngineProperty(asEP_INIT_GLOBAL_VARS_AFTER_BUILD, 0);
}

/// An engine whose compiler was left in the middle of something can only be left lying.
void OracleEngine::replace() {
    if (awake_ != nullptr) awake_->giveUp();
    awake_ = nullptr;
    module_ = nullptr;
    declarations_.reset();
    engine_->ClearMessageCallback();
    engine_ = another_ ? another_() : nullptr;
    prepare();
}

bool OracleEngine::renew() {
    if (!another_ || engine_ == nullptr) return false;
    rest();
    engine_->ClearMessageCallback();
    engine_->ShutDownAndRelease();
    engine_ = another_();
    prepare();
    return engine_ != nullptr;
}

bool OracleEngine::guarded(std::string_view text, std::uint64_t ms,
                           const std::function<bool()>& compiles) {
    constexpr std::size_t kBytes = scaledMebibytes(512);
    if (engine_ == nullptr || scanSource(text, moduleSession().limits())) return false;
    try {
        const CompileGuard guard(systemClock(), systemClock().monotonic() + ms, kBytes);
        return compiles();
    } catch (const CompileEnded& ended) {
        firstError_ = ended.reason;
        replace();
        return false;
    }
}

void OracleEngine::message(const asSMessageInfo* info, void* self) noexcept {
    auto& oracle = *static_cast<OracleEngine*>(self);
    if (info->type != asMSGTYPE_ERROR) return;
    try {
        oracle.errors_.push_back({info->row, info->col});
        if (oracle.firstError_.empty()) oracle.firstError_ = info->message;
    } catch (...) {
        // Without memory the reason stays unknown.
    }
}

asIScriptModule* OracleEngine::build(const char* name, const std::string& text) {
    constexpr std::uint64_t kBuildMs = 2000;
    firstError_.clear();
    errors_.clear();
    asIScriptModule* module = nullptr;
    const bool built = guarded(text, kBuildMs, [&] {
        module = engine_->GetModule(name, asGM_ALWAYS_CREATE);
        return module != nullptr &&
               module->AddScriptSection("script", text.data(), text.size()) >= 0 &&
               module->Build() >= 0;
    });
    if (built) return module;
    asIScriptModule* const failed =
        engine_ == nullptr ? nullptr : engine_->GetModule(name, asGM_ONLY_IF_EXISTS);
    if (failed != nullptr) failed->Discard();
    return nullptr;
}

asIScriptFunction* OracleEngine::compile(asIScriptModule& module, const std::string& function) {
    constexpr std::uint64_t kProbeMs = 500;
    asIScriptFunction* made = nullptr;
    const bool compiled = guarded(function, kProbeMs, [&] {
        return module.CompileFunction("probe", function.c_str(), 0, 0, &made) >= 0;
    });
    if (compiled || engine_ != module.GetEngine()) return compiled ? made : nullptr;
    if (made != nullptr) made->Release();
    return nullptr;
}

std::string passedType(std::string_view declaration) {
    std::string type(declaration.substr(0, declaration.find('&')));
    if (type.starts_with("const ")) type.erase(0, 6);
    while (!type.empty() && (type.back() == ' ' || type.back() == '+')) type.pop_back();
    if (type.ends_with(" const")) type.erase(type.size() - 6);
    return type;
}

std::string objectType(std::string_view type) {
    std::string result = passedType(type);
    while (!result.empty() && (result.back() == '@' || result.back() == ' ')) result.pop_back();
    return result;
}

Oracle::Oracle(OracleEngine& engine, const ScopeIndex& index)
    : engine_(engine), index_(index), tokens_(index.tokens()) {}

Oracle::~Oracle() {
    if (engine_.awake_ == this) engine_.awake_ = nullptr;
}

void Oracle::allow(std::uint64_t ms) {
    end_ = systemClock().monotonic() + ms;
}

bool Oracle::spent() const {
    return end_ != 0 && systemClock().monotonic() >= end_;
}

asIScriptModule* Oracle::module() {
    if (hopeless_) return nullptr;
    if (engine_.awake_ != this) build();
    return hopeless_ ? nullptr : engine_.module_;
}

/// This text keeps the compiler busy for too long; it is not given to it again.
void Oracle::giveUp() {
    hopeless_ = true;
}

void OracleEngine::rest() {
    if (module_ != nullptr) module_->Discard();
    module_ = nullptr;
    declarations_.reset();
    awake_ = nullptr;
}

namespace {

/// In classes: an engine keeps them, with the classes that they stood in before.
bool holdsFunctionTypes(const ScopeIndex& index) {
    return std::any_of(index.declarations().begin(), index.declarations().end(),
                       [&](const Declaration& one) {
                           return one.kind == DeclarationKind::functionType &&
                                  index.scopes()[at(one.scope)].kind == Scope::Kind::type;
                       });
}

}  // namespace

void Oracle::build() {
    const std::string open = withoutAccess(index_);
    std::string bare = withoutBodies(open, index_, {}, Lines::drop);
    if (engine_.declarations_ != bare) {
        engine_.rest();
        engine_.awake_ = this;
        buildAny(bare, open);
        if (!hopeless_) engine_.declarations_ = std::move(bare);
    }
    engine_.awake_ = hopeless_ ? nullptr : this;
}

/// Without bodies where that builds, for speed; else the whole text, else without the bodies that
/// are faulty; else without whatever is.
void Oracle::buildAny(const std::string& bare, const std::string& open) {
    constexpr int kMostAttempts = 6;
    const auto attempt = [&](const std::string& text) {
        engine_.module_ = hopeless_ ? nullptr : engine_.build("meaning", text);
        return engine_.module_ != nullptr;
    };
    if (attempt(bare) || attempt(open)) return;
    if (holdsFunctionTypes(index_) && !hopeless_ && engine_.renew()) {
        engine_.awake_ = this;
        if (attempt(bare) || attempt(open)) return;
    }
    std::vector<int> rows;
    for (const CompilerPlace& error : engine_.errors()) rows.push_back(error.row);
    if (!rows.empty() && attempt(withoutBodies(open, index_, rows))) return;
    std::string kept = declarationsAlone(open, index_);
    for (int i = 0; i < kMostAttempts; ++i) {
        const std::string stripped = withoutBodies(kept, index_, {});
        if (attempt(stripped) || engine_.errors().empty()) return;
        blankPlaces(kept, index_, engine_.errors(), TextDocument(stripped));
    }
}

std::string Oracle::nameSpaceAt(std::size_t offset) const {
    std::string path;
    for (int scope = index_.scopeAt(offset); scope > 0; scope = index_.scopes()[at(scope)].parent) {
        const Scope& around = index_.scopes()[at(scope)];
        if (around.kind != Scope::Kind::nameSpace || around.owner == kNoIndex) continue;
        const std::string name(index_.declarations()[at(around.owner)].name);
        path = path.empty() ? name : name + "::" + path;
    }
    return path;
}

std::string Oracle::typeOfVariable(int declaration) {
    const Declaration& variable = index_.declarations()[at(declaration)];
    if (variable.type.empty()) return {};
    const std::string type = passedType(index_.oneLine(variable.type));
    if (type != "auto" && type != "auto@" && type != "auto @") return type;
    // "auto name = EXPRESSION" up to the end of its statement.
    const std::size_t assign = index_.tokenAt(variable.nameRange.end);
    if (assign >= tokens_.size() || !tokens_[assign].is("=")) return {};
    std::size_t last = assign + 1;
    for (int open = 0; last < tokens_.size(); ++last) {
        const ScriptToken& token = tokens_[last];
        if (token.is("(") || token.is("[") || token.is("{")) ++open;
        if (token.is(")") || token.is("]") || token.is("}")) --open;
        if (open < 0 || (open == 0 && (token.is(";") || token.is(",")))) break;
    }
    if (last == assign + 1) return {};
    const std::size_t begin = static_cast<std::size_t>(tokens_[assign + 1].position);
    const std::size_t end = static_cast<std::size_t>(tokens_[last - 1].end());
    return typeOf(std::string_view(index_.document().text()).substr(begin, end - begin),
                  variable.nameRange.begin);
}

/// A type that stands in a class is known by its class outside.
std::string Oracle::withPath(std::string type, int variable) const {
    const std::string name = objectType(type);
    for (const int i :
         index_.meaningsOf(name, index_.declarations()[at(variable)].nameRange.begin)) {
        const Declaration& one = index_.declarations()[at(i)];
        const bool inside = index_.scopes()[at(one.scope)].kind == Scope::Kind::type;
        if (isType(one.kind) && inside) return type.replace(0, name.size(), index_.pathOf(i));
    }
    return type;
}

/// False when its type cannot be told.
bool Oracle::addParameter(int variable, Probe& probe) {
    std::string type = typeOfVariable(variable);
    if (type.empty()) return false;
    const std::string name(index_.declarations()[at(variable)].name);
    type = withPath(std::move(type), variable);
    probe.parameters += (probe.parameters.empty() ? "" : ", ") + type;
    // A handle by value, everything else by a reference that any value can be behind.
    probe.parameters += (type.back() == '@' ? " " : " &in ") + name;
    return true;
}

/// What stands in a probe for the name of a member of the class around: "Base::f" is a member of
/// the object as a Base. Empty for other names.
std::string Oracle::memberInstead(const std::vector<ScriptToken>& tokens, std::size_t i,
                                  int type) const {
    const std::string name(tokens[i].text);
    const bool path = i + 1 < tokens.size() && tokens[i + 1].is("::");
    if (path) {
        for (const int base : index_.lineageOf(type))
            if (index_.declarations()[at(base)].name == name)
                return "cast<" + index_.pathOf(base) + ">(this_).";
        return {};
    }
    const bool member = !index_.membersOf(type, name).empty() ||
                        !index_.membersOf(type, "get_" + name).empty() ||
                        !index_.membersOf(type, "set_" + name).empty();
    return member ? "this_." + name : std::string();
}

namespace {

/// The name of an argument: "f(name: 5)".
bool isLabel(const std::vector<ScriptToken>& tokens, std::size_t i) {
    return i > 0 && i + 1 < tokens.size() && tokens[i + 1].is(":") &&
           (tokens[i - 1].is("(") || tokens[i - 1].is(","));
}

}  // namespace

/// Members get "this_." in front; of locals those that occur become parameters.
bool Oracle::prepare(std::string_view expression, std::size_t offset, Probe& probe) {
    probe.nameSpace = nameSpaceAt(offset);
    const int type = index_.classAt(offset);
    bool usesThis = false;
    std::set<int> added;
    const std::vector<ScriptToken> tokens = scriptTokens(expression);
    int done = 0;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const ScriptToken& token = tokens[i];
        const bool behind = i > 0 && (tokens[i - 1].is(".") || tokens[i - 1].is("::"));
        if (!token.isWord() || behind || isLabel(tokens, i)) continue;
        const bool path = i + 1 < tokens.size() && tokens[i + 1].is("::");
        std::string instead;
        if (token.is("this")) {
            instead = "this_";
        } else if (token.isName()) {
            const int local = path ? kNoIndex : index_.variableAt(token.text, offset);
            if (local != kNoIndex) {
                if (added.insert(local).second && !addParameter(local, probe)) return false;
            } else if (type != kNoIndex) {
                instead = memberInstead(tokens, i, type);
            }
        }
        if (instead.empty()) continue;
        usesThis = true;
        probe.expression += expression.substr(static_cast<std::size_t>(done),
                                              static_cast<std::size_t>(token.position - done));
        probe.expression += instead;
        done = path ? tokens[i + 1].end() : token.end();
    }
    probe.expression += expression.substr(static_cast<std::size_t>(done));
    if (!usesThis || type == kNoIndex) return !usesThis;
    const std::string self = index_.pathOf(type) + "@ this_";
    probe.parameters = probe.parameters.empty() ? self : self + ", " + probe.parameters;
    return true;
}

asIScriptFunction* Oracle::compile(const Probe& probe, const std::string& body) {
    asIScriptModule* const around = module();
    if (around == nullptr) return nullptr;
    around->SetDefaultNamespace(probe.nameSpace.c_str());
    const std::string source = "void probe_(" + probe.parameters + "){" + body + "}";
    asIScriptFunction* const function = engine_.compile(*around, source);
    if (!hopeless_) around->SetDefaultNamespace("");
    return function;
}

std::string Oracle::typeOf(ByteRange expression) {
    return typeOf(
        std::string_view(index_.document().text()).substr(expression.begin, expression.size()),
        expression.begin);
}

std::string Oracle::typeOf(std::string_view expression, std::size_t offset) {
    if (expression.empty() || spent() || module() == nullptr || depth_ >= kDeepest) return {};
    const auto key = std::pair(offset, std::string(expression));
    if (const auto known = types_.find(key); known != types_.end()) return known->second;
    ++depth_;
    std::string type;
    Probe probe;
    if (prepare(expression, offset, probe)) {
        if (asIScriptFunction* const value =
                compile(probe, "auto result_ = " + probe.expression + ";")) {
            for (asUINT i = 0; i < value->GetVarCount(); ++i) {
                const char* name = nullptr;
                int id = 0;
                if (value->GetVar(i, &name, &id) < 0 || name == nullptr ||
                    std::string_view(name) != "result_")
                    continue;
                // Of what has no type, such as null, the engine cannot even tell the name.
                if (id < 0) break;
                if (const char* const text = engine_.engine()->GetTypeDeclaration(id, true))
                    type = text;
            }
            value->Release();
        } else if (asIScriptFunction* const call = compile(probe, probe.expression + ";")) {
            type = "void";
            call->Release();
        }
    }
    --depth_;
    return spent() ? type : types_.emplace(key, type).first->second;
}

asITypeInfo* Oracle::typeInfo(std::string_view declaration, std::size_t offset) {
    const std::string type = objectType(declaration);
    asIScriptModule* const in = type.empty() ? nullptr : module();
    if (in == nullptr) return nullptr;
    for (std::string around = nameSpaceAt(offset);;) {
        in->SetDefaultNamespace(around.c_str());
        asITypeInfo* const found = in->GetTypeInfoByDecl(type.c_str());
        in->SetDefaultNamespace("");
        if (found != nullptr || around.empty()) return found;
        const auto cut = around.rfind("::");
        around = cut == std::string::npos ? std::string() : around.substr(0, cut);
    }
}

std::size_t Oracle::opening(std::size_t close) const {
    int open = 0;
    for (std::size_t i = close + 1; i-- > 0;) {
        const ScriptToken& token = tokens_[i];
        if (token.is(")") || token.is("]")) ++open;
        if ((token.is("(") || token.is("[")) && --open == 0) return i;
        if (token.is(";") || token.is("{") || token.is("}")) break;
    }
    return close;
}

/// The word in front of the list of types that closes at `close`.
std::size_t Oracle::beforeArguments(std::size_t close) const {
    int open = 0;
    for (std::size_t i = close + 1; i-- > 1;) {
        const ScriptToken& token = tokens_[i];
        if (token.is(";") || token.is("{") || token.is("}")) break;
        if (token.text.find_first_not_of('>') == std::string_view::npos)
            open += static_cast<int>(token.text.size());
        if (token.is("<") && --open <= 0) return i - 1;
    }
    return close;
}

ByteRange Oracle::chainBefore(std::size_t offset) const {
    std::size_t i = index_.tokenAt(offset);
    const ByteRange none{offset, offset};
    if (i == 0) return none;
    const std::size_t last = --i;
    for (int links = 0; links < kLongestChain; ++links) {
        while (tokens_[i].is(")") || tokens_[i].is("]")) {
            const std::size_t open = opening(i);
            if (open == i || open == 0) return none;
            // "(a + b)." is a chain of its own; "cast<T>(a)." and "T<U>(a)." begin at their word.
            const ScriptToken& before = tokens_[open - 1];
            const bool value = before.isName() || before.is("]") || before.is(")") ||
                               before.kind == ScriptToken::Kind::text || before.is("this");
            if (tokens_[open].is("(") && before.is(">")) {
                i = beforeArguments(open - 1);
                break;
            }
            i = value ? open - 1 : open;
            if (!value) break;
        }
        const bool goesOn = i >= 2 && (tokens_[i - 1].is(".") || tokens_[i - 1].is("::"));
        if (!goesOn) break;
        if (links + 1 == kLongestChain) return none;
        // Nothing stands before the "::" of the global namespace.
        if (tokens_[i - 1].is("::") && !tokens_[i - 2].isName()) {
            --i;
            break;
        }
        i -= 2;
    }
    return {static_cast<std::size_t>(tokens_[i].position),
            static_cast<std::size_t>(tokens_[last].end())};
}

std::vector<asIScriptFunction*> Oracle::callsIn(ByteRange expression, std::string_view name) {
    std::vector<asIScriptFunction*> calls;
    Probe probe;
    const auto text =
        std::string_view(index_.document().text()).substr(expression.begin, expression.size());
    if (spent() || module() == nullptr || !prepare(text, expression.begin, probe)) return calls;
    asIScriptFunction* const function = compile(probe, probe.expression + ";");
    if (function == nullptr) return calls;
    asUINT length = 0;
    const asDWORD* code = function->GetByteCode(&length);
    for (asUINT i = 0; code != nullptr && i < length;) {
        const auto operation = static_cast<asEBCInstr>(*reinterpret_cast<const asBYTE*>(code + i));
        if (operation == asBC_CALL || operation == asBC_CALLSYS || operation == asBC_CALLINTF ||
            operation == asBC_CALLBND) {
            asIScriptFunction* const called =
                engine_.engine()->GetFunctionById(static_cast<int>(code[i + 1]));
            if (called != nullptr && called->GetName() == std::string(name))
                calls.push_back(called);
        }
        i += static_cast<asUINT>(asBCTypeSize[asBCInfo[operation].type]);
    }
    function->Release();
    return calls;
}

}  // namespace korvant
