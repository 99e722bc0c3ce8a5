#include "language/oracle.h"

#include <algorithm>
#include <atomic>
#include <set>

namespace korvant {

namespace {

/// Oracles may stand side by side.
std::string nextModule() {
    static std::atomic<unsigned> made{0};
    return "meaning" + std::to_string(++made);
}

constexpr int kDeepest = 16;

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

bool isVoid(std::string_view type) {
    return type.empty() || type == "void";
}

/// Functions with a body whose result the compiler would miss.
bool returnsValue(const Declaration& function, std::string_view text) {
    if (function.kind == DeclarationKind::constructor ||
        function.kind == DeclarationKind::destructor || function.type.empty())
        return false;
    return !isVoid(text.substr(function.type.begin, function.type.size()));
}

/// The names of the parameters, as the arguments of a call of the function itself.
std::string ownArguments(const Declaration& function, const ScopeIndex& index) {
    std::string list;
    if (function.inner == kNoIndex) return list;
    for (const int i : index.declaredIn(function.inner)) {
        const Declaration& parameter = index.declarations()[at(i)];
        if (parameter.kind != DeclarationKind::parameter) continue;
        list += (list.empty() ? "" : ", ") + std::string(parameter.name);
    }
    return list;
}

}  // namespace

OracleEngine::OracleEngine(asIScriptEngine* engine) : engine_(engine) {
    if (engine_ == nullptr) return;
    engine_->SetMessageCallback(asFUNCTION(message), this, asCALL_CDECL);
    engine_->SetEngineProperty(asEP_INIT_GLOBAL_VARS_AFTER_BUILD, 0);
}

OracleEngine::~OracleEngine() {
    if (engine_ == nullptr) return;
    engine_->ClearMessageCallback();
    engine_->ShutDownAndRelease();
}

void OracleEngine::message(const asSMessageInfo* info, void* self) noexcept {
    auto& oracle = *static_cast<OracleEngine*>(self);
    if (info->type != asMSGTYPE_ERROR) return;
    try {
        oracle.errorRows_.push_back(info->row);
        if (oracle.firstError_.empty()) oracle.firstError_ = info->message;
    } catch (...) {
        // Without memory the reason stays unknown.
    }
}

asIScriptModule* OracleEngine::build(const char* name, const std::string& text) {
    firstError_.clear();
    errorRows_.clear();
    if (engine_ == nullptr) return nullptr;
    asIScriptModule* const module = engine_->GetModule(name, asGM_ALWAYS_CREATE);
    if (module == nullptr) return nullptr;
    if (module->AddScriptSection("script", text.data(), text.size()) >= 0 && module->Build() >= 0)
        return module;
    module->Discard();
    return nullptr;
}

std::string withoutAccess(std::string_view text) {
    std::string result(text);
    for (const ScriptToken& token : scriptTokens(text))
        if (token.is("private") || token.is("protected"))
            result.replace(static_cast<std::size_t>(token.position), token.text.size(),
                           token.text.size(), ' ');
    return result;
}

namespace {

/// "super(...);" of a constructor stays: without it the class may not build.
std::string callOfSuper(std::string_view body) {
    const std::vector<ScriptToken> tokens = scriptTokens(body);
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
        if (!tokens[i].is("super") || !tokens[i + 1].is("(")) continue;
        int open = 0;
        for (std::size_t j = i + 1; j < tokens.size(); ++j) {
            if (tokens[j].is("(")) ++open;
            if (tokens[j].is(")") && --open == 0)
                return std::string(body.substr(
                           static_cast<std::size_t>(tokens[i].position),
                           static_cast<std::size_t>(tokens[j].end() - tokens[i].position))) +
                       ";";
        }
    }
    return {};
}

std::string bodyInstead(const Declaration& function, const ScopeIndex& index) {
    const std::string_view text = index.document().text();
    if (returnsValue(function, text))
        return "{return " + std::string(function.name) + "(" + ownArguments(function, index) +
               ");}";
    if (function.kind != DeclarationKind::constructor) return "{}";
    return "{" + callOfSuper(text.substr(function.body.begin, function.body.size())) + "}";
}

bool holdsOneOf(ByteRange range, const TextDocument& text, const std::vector<int>& rows) {
    const auto first = static_cast<int>(text.lineOf(range.begin)) + 1;
    const auto last = static_cast<int>(text.lineOf(range.end)) + 1;
    return rows.empty() || std::any_of(rows.begin(), rows.end(),
                                       [&](int row) { return first <= row && row <= last; });
}

bool hasBody(const Declaration& function) {
    const bool named = function.kind == DeclarationKind::function ||
                       function.kind == DeclarationKind::method ||
                       function.kind == DeclarationKind::constructor ||
                       function.kind == DeclarationKind::destructor;
    return named && !function.body.empty();
}

}  // namespace

/// From the end, so that places in front stay as they are.
std::string withoutBodies(std::string text, const ScopeIndex& index, const std::vector<int>& rows) {
    const auto& declarations = index.declarations();
    std::size_t taken = text.size() + 1;
    for (std::size_t i = declarations.size(); i-- > 0;) {
        const Declaration& function = declarations[i];
        if (!hasBody(function) || function.body.end > taken ||
            !holdsOneOf(function.body, index.document(), rows))
            continue;
        text.replace(function.body.begin, function.body.size(), bodyInstead(function, index));
        taken = function.body.begin;
    }
    return text;
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
    : engine_(engine), index_(index), tokens_(scriptTokens(index.document().text())) {
    build();
}

/// The whole text, else without the bodies that are faulty, else without any.
void Oracle::build() {
    const std::string open = withoutAccess(index_.document().text());
    const std::string name = nextModule();
    module_ = engine_.build(name.c_str(), open);
    if (module_ != nullptr) return;
    const std::vector<int> rows = engine_.errorRows();
    if (!rows.empty()) module_ = engine_.build(name.c_str(), withoutBodies(open, index_, rows));
    if (module_ == nullptr) module_ = engine_.build(name.c_str(), withoutBodies(open, index_, {}));
}

Oracle::~Oracle() {
    if (module_ != nullptr) module_->Discard();
}

std::size_t Oracle::tokenAt(std::size_t offset) const {
    const auto found = std::lower_bound(
        tokens_.begin(), tokens_.end(), static_cast<int>(offset),
        [](const ScriptToken& token, int place) { return token.position < place; });
    return static_cast<std::size_t>(found - tokens_.begin());
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
    const std::size_t assign = tokenAt(variable.nameRange.end);
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

/// False when its type cannot be told.
bool Oracle::addParameter(int variable, Probe& probe) {
    const std::string type = typeOfVariable(variable);
    if (type.empty()) return false;
    const std::string name(index_.declarations()[at(variable)].name);
    probe.parameters += (probe.parameters.empty() ? "" : ", ") + type;
    // A handle by value, everything else by a reference that any value can be behind.
    probe.parameters += (type.back() == '@' ? " " : " &in ") + name;
    return true;
}

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
        const bool label = i + 1 < tokens.size() && tokens[i + 1].is("::");
        if (!token.isWord() || behind || label) continue;
        std::string instead;
        if (token.is("this")) {
            instead = "this_";
        } else if (token.isName()) {
            const int local = index_.variableAt(token.text, offset);
            if (local != kNoIndex) {
                if (added.insert(local).second && !addParameter(local, probe)) return false;
            } else if (type != kNoIndex && !index_.membersOf(type, token.text).empty()) {
                instead = "this_." + std::string(token.text);
            }
        }
        if (instead.empty()) continue;
        usesThis = true;
        probe.expression += expression.substr(static_cast<std::size_t>(done),
                                              static_cast<std::size_t>(token.position - done));
        probe.expression += instead;
        done = token.end();
    }
    probe.expression += expression.substr(static_cast<std::size_t>(done));
    if (!usesThis || type == kNoIndex) return !usesThis;
    const std::string self = index_.pathOf(type) + "@ this_";
    probe.parameters = probe.parameters.empty() ? self : self + ", " + probe.parameters;
    return true;
}

asIScriptFunction* Oracle::compile(const Probe& probe, const std::string& body) {
    if (module_ == nullptr) return nullptr;
    asIScriptFunction* function = nullptr;
    module_->SetDefaultNamespace(probe.nameSpace.c_str());
    const std::string source = "void probe_(" + probe.parameters + "){" + body + "}";
    const int result = module_->CompileFunction("probe", source.c_str(), 0, 0, &function);
    module_->SetDefaultNamespace("");
    if (result >= 0) return function;
    if (function != nullptr) function->Release();
    return nullptr;
}

std::string Oracle::typeOf(ByteRange expression) {
    return typeOf(
        std::string_view(index_.document().text()).substr(expression.begin, expression.size()),
        expression.begin);
}

std::string Oracle::typeOf(std::string_view expression, std::size_t offset) {
    if (expression.empty() || module_ == nullptr || depth_ >= kDeepest) return {};
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
    return types_.emplace(key, type).first->second;
}

asITypeInfo* Oracle::typeInfo(std::string_view declaration, std::size_t offset) const {
    const std::string type = objectType(declaration);
    if (module_ == nullptr || type.empty()) return nullptr;
    for (std::string around = nameSpaceAt(offset);;) {
        module_->SetDefaultNamespace(around.c_str());
        asITypeInfo* const found = module_->GetTypeInfoByDecl(type.c_str());
        module_->SetDefaultNamespace("");
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

ByteRange Oracle::chainBefore(std::size_t offset) const {
    std::size_t i = tokenAt(offset);
    const ByteRange none{offset, offset};
    if (i == 0) return none;
    const std::size_t last = --i;
    for (;;) {
        while (tokens_[i].is(")") || tokens_[i].is("]")) {
            const std::size_t open = opening(i);
            if (open == i || open == 0) return none;
            // "(a + b)." is a chain of its own; "cast<T>(a)." begins at the cast.
            const ScriptToken& before = tokens_[open - 1];
            const bool value = before.isName() || before.is("]") || before.is(")") ||
                               before.kind == ScriptToken::Kind::text || before.is("this");
            if (tokens_[open].is("(") && before.is(">")) {
                i = open - 1;
                while (i > 0 && !tokens_[i].is("cast") && !tokens_[i].is(";")) --i;
                break;
            }
            i = value ? open - 1 : open;
            if (!value) break;
        }
        if (i < 2 || !(tokens_[i - 1].is(".") || tokens_[i - 1].is("::"))) break;
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
    if (module_ == nullptr || !prepare(text, expression.begin, probe)) return calls;
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
