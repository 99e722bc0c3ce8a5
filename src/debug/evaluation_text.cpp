#include "debug/evaluation_text.h"

#include <algorithm>
#include <optional>

#include "host/scan/source_tokens.h"

namespace korvant {

namespace {

constexpr std::size_t kLongest = std::size_t{16} << 10;
constexpr std::size_t kMostTokens = 2000;
constexpr char kThis[] = "this_";

/// Whether a comment or a text does not end inside the expression.
bool runsOver(std::string_view text, const TokenList& tokens) {
    std::size_t behind = 0;
    if (tokens.size() > 0) {
        const Token& last = tokens[tokens.size() - 1];
        behind = last.begin + last.size;
        const std::string_view word = tokens.text(tokens.size() - 1);
        const bool isText = last.kind == Token::Kind::text;
        if (isText && (word.size() < 2 || word.back() != word.front())) return true;
    }
    const std::string_view rest = text.substr(behind);
    const auto comment = rest.rfind("/*");
    return comment != std::string_view::npos &&
           rest.find("*/", comment + 2) == std::string_view::npos;
}

bool changesAt(const TokenList& tokens, std::size_t i) {
    const auto doubled = [&](char symbol) {
        return tokens.isSymbol(i, symbol) && tokens.isSymbol(i + 1, symbol) &&
               tokens[i].begin + 1 == tokens[i + 1].begin;
    };
    return tokens.isSymbol(i, kAssign) || doubled('+') || doubled('-');
}

class Reader {
  public:
    Reader(asIScriptEngine& engine, const FrameScope& scope, std::string_view text,
           const TokenList& tokens, bool late)
        : engine_(engine), scope_(scope), text_(text), tokens_(tokens), late_(late) {}

    EvaluationText read() {
        if (!balanced()) return refuse("The brackets of this expression do not match.");
        if (ended()) return refuse("A \";\" does not belong into an expression.");
        found_.untyped = namesNoType();
        look();
        std::size_t copied = 0;
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            std::size_t used = 1;
            std::string word;
            if (!standsAlone(i) || !nameAt(i, word, used)) continue;
            if (!found_.error.empty()) return std::move(found_);
            found_.body += text_.substr(copied, tokens_[i].begin - copied);
            found_.body += word;
            i += used - 1;
            copied = tokens_[i].begin + tokens_[i].size;
        }
        found_.body += text_.substr(copied);
        return std::move(found_);
    }

  private:
    EvaluationText refuse(const char* why) {
        found_.error = why;
        return std::move(found_);
    }

    bool balanced() const {
        std::string open;
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (tokens_[i].kind != Token::Kind::symbol) continue;
            const char symbol = tokens_[i].symbol;
            if (symbol == '(' || symbol == '[' || symbol == '{') open.push_back(symbol);
            if (symbol != ')' && symbol != ']' && symbol != '}') continue;
            const char wanted = symbol == ')' ? '(' : symbol == ']' ? '[' : '{';
            if (open.empty() || open.back() != wanted) return false;
            open.pop_back();
        }
        return open.empty();
    }

    /// A ";" stands outside of the body of a lambda.
    bool ended() const {
        int braces = 0;
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (tokens_.isSymbol(i, '{')) ++braces;
            if (tokens_.isSymbol(i, '}')) --braces;
            if (tokens_.isSymbol(i, ';') && braces == 0) return true;
        }
        return false;
    }

    /// What stands before a bracket that opens a call or an index, and no group.
    bool isCalled(std::size_t i) const {
        const bool word = tokens_.isName(i) && !isOperatorWord(tokens_.text(i));
        return word || tokens_.isSymbol(i, ')') || tokens_.isSymbol(i, ']') ||
               tokens_.isSymbol(i, '>');
    }

    /// A function without a name stands where neither a parameter nor an assignment gives it a
    /// type. The engine takes it for a value then, which ends the process.
    bool namesNoType() const {
        std::vector<bool> typed = {false};
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (tokens_.isSymbol(i, kAssign)) typed.back() = true;
            if (tokens_.isSymbol(i, ',') && typed.size() == 1) typed.back() = false;
            const bool group = tokens_.isSymbol(i, '(') && (i == 0 || !isCalled(i - 1));
            if (group || tokens_.isSymbol(i, '(') || tokens_.isSymbol(i, '[') ||
                tokens_.isSymbol(i, '{'))
                typed.push_back(!group || typed.back());
            const bool closes =
                tokens_.isSymbol(i, ')') || tokens_.isSymbol(i, ']') || tokens_.isSymbol(i, '}');
            if (closes && typed.size() > 1) typed.pop_back();
            if (tokens_.isWord(i, "function") && tokens_.isSymbol(i + 1, '(') && !typed.back())
                return true;
        }
        return false;
    }

    /// What a look at the signs tells of calls and changes.
    void look() {
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (changesAt(tokens_, i)) found_.changes = true;
            if (!tokens_.isSymbol(i, '(') || i == 0) continue;
            if (isCalled(i - 1)) found_.calls = true;
        }
    }

    static bool isOperatorWord(std::string_view word) {
        return word == "and" || word == "or" || word == "xor" || word == "not" || word == "is";
    }

    /// A name that is looked up in the frame, and no member or part of a longer name.
    bool standsAlone(std::size_t i) const {
        if (!tokens_.isName(i)) return false;
        if (i > 0 && (tokens_.isSymbol(i - 1, '.') || tokens_.isSymbol(i - 1, kScope)))
            return false;
        if (tokens_.isSymbol(i + 1, kScope)) return false;
        const bool named = tokens_.isSymbol(i + 1, ':') && i > 0 &&
                           (tokens_.isSymbol(i - 1, '(') || tokens_.isSymbol(i - 1, ','));
        return !named;
    }

    /// False for a name that stays as it is.
    bool nameAt(std::size_t i, std::string& word, std::size_t& used) {
        const std::string name(tokens_.text(i));
        NamedValue local;
        NamedValue member;
        if (scope_.findLocal(name, local)) {
            word = bind(EvaluationBinding::Kind::local, name, local, i);
            return true;
        }
        if (!scope_.hasThis()) return false;
        if (name == "this") {
            const std::string inner(tokens_.isName(i + 2) ? tokens_.text(i + 2) : "");
            const bool call = tokens_.isSymbol(i + 3, '(');
            if (tokens_.isSymbol(i + 1, '.') && !call && scope_.findMember(inner, member)) {
                used = 3;
                word = bind(EvaluationBinding::Kind::member, kThis + inner, member, i + 2);
                return true;
            }
            word = bindThis(i);
            return true;
        }
        const bool call = tokens_.isSymbol(i + 1, '(');
        if (!call && scope_.findMember(name, member)) {
            word = bind(EvaluationBinding::Kind::member, kThis + name, member, i);
            return true;
        }
        if (!isMethod(name, call)) return false;
        word = bindThis(i) + "." + name;
        return true;
    }

    bool isMethod(const std::string& name, bool call) const {
        const asITypeInfo* const type = engine_.GetTypeInfoById(scope_.thisObject().typeId);
        for (asUINT i = 0; type != nullptr && i < type->GetMethodCount(); ++i) {
            asIScriptFunction* const method = type->GetMethodByIndex(i);
            const std::string known = method->GetName();
            if (call ? known == name : (known == "get_" + name || known == "set_" + name))
                return true;
        }
        return false;
    }

    std::string bindThis(std::size_t i) {
        TypedValue object = scope_.thisObject();
        object.typeId |= asTYPEID_OBJHANDLE;
        if (object.constant) object.typeId |= asTYPEID_HANDLETOCONST;
        return bind(EvaluationBinding::Kind::thisObject, kThis, {"this", {}, object, 0}, i);
    }

    std::string bind(EvaluationBinding::Kind kind, const std::string& parameter,
                     const NamedValue& named, std::size_t token) {
        const TypedValue& value = named.value;
        // One that is to be set may be unset.
        if (!late_ && (value.address == nullptr || (value.unset && !found_.changes)))
            found_.error = whyNoValue(named.name, value);
        const auto known = std::find_if(
            found_.bindings.begin(), found_.bindings.end(),
            [&](const EvaluationBinding& binding) { return binding.parameter == parameter; });
        // It comes by value, and what is set would be lost.
        if (isFunctionHandle(engine_, value.typeId) && isAssigned(token))
            found_.error = "\"" + named.name + "\" is a function handle: it is set as a variable.";
        EvaluationBinding binding{
            kind, passOf(kind, value, token), named.name, parameter, value, named.index};
        if (known == found_.bindings.end())
            found_.bindings.push_back(std::move(binding));
        else if (binding.pass == EvaluationBinding::Pass::address)
            known->pass = binding.pass;
        return parameter;
    }

    /// Also in brackets, and with the sign of a handle.
    bool isAssigned(std::size_t token) const {
        std::size_t first = token;
        std::size_t behind = token + 1;
        const auto skipSigns = [&] {
            while (first > 0 && tokens_.isSymbol(first - 1, '@')) --first;
        };
        skipSigns();
        while (first > 0 && tokens_.isSymbol(first - 1, '(') && tokens_.isSymbol(behind, ')') &&
               (first == 1 || !isCalled(first - 2))) {
            --first;
            ++behind;
            skipSigns();
        }
        return tokens_.isSymbol(behind, kAssign);
    }

    EvaluationBinding::Pass passOf(EvaluationBinding::Kind kind, const TypedValue& value,
                                   std::size_t token) const {
        using Pass = EvaluationBinding::Pass;
        if (kind == EvaluationBinding::Kind::thisObject) return Pass::handle;
        if (isFunctionHandle(engine_, value.typeId)) return Pass::handle;
        if ((value.typeId & asTYPEID_OBJHANDLE) == 0)
            return value.constant ? Pass::readOnly : Pass::address;
        // A handle is passed itself only where it may be changed: the engine of some hosts takes
        // handles by reference for local ones.
        const bool named = token > 0 && tokens_.isSymbol(token - 1, '@');
        return named && found_.changes && !value.constant ? Pass::address : Pass::handle;
    }

    asIScriptEngine& engine_;
    const FrameScope& scope_;
    std::string_view text_;
    const TokenList& tokens_;
    bool late_;
    EvaluationText found_;
};

}  // namespace

std::string EvaluationText::parameters(asIScriptEngine& engine) const {
    std::string text;
    for (const EvaluationBinding& binding : bindings) {
        if (!text.empty()) text += ", ";
        // The engine's buffer is used again by the next question.
        const std::string type = engine.GetTypeDeclaration(binding.value.typeId, true);
        switch (binding.pass) {
            case EvaluationBinding::Pass::address:
                text += type + " &out ";
                break;
            case EvaluationBinding::Pass::readOnly:
                text += "const " + type + " &in ";
                break;
            case EvaluationBinding::Pass::handle:
                text += type + (type.ends_with("@") ? " " : "@ ");
                break;
        }
        text += binding.parameter;
    }
    return text;
}

EvaluationText evaluationText(asIScriptEngine& engine, const FrameScope& scope,
                              std::string_view expression, bool late) {
    EvaluationText refused;
    const std::optional<TokenList> tokens = TokenList::of(expression, kMostTokens);
    if (expression.size() > kLongest || !tokens)
        refused.error = "This expression is too long.";
    else if (expression.find('\0') != std::string_view::npos)
        refused.error = "There is a zero byte in this expression.";
    else if (tokens->size() == 0)
        refused.error = "There is no expression.";
    else if (runsOver(expression, *tokens))
        refused.error = "A text or a comment of this expression does not end.";
    if (!refused.error.empty()) return refused;
    return Reader(engine, scope, expression, *tokens, late).read();
}

bool isFunctionHandle(asIScriptEngine& engine, int typeId) {
    const asITypeInfo* const type = engine.GetTypeInfoById(typeId);
    return type != nullptr && (type->GetFlags() & asOBJ_FUNCDEF) != 0;
}

bool changesSomething(std::string_view expression) {
    const std::optional<TokenList> tokens = TokenList::of(expression, kMostTokens);
    for (std::size_t i = 0; tokens && i < tokens->size(); ++i)
        if (changesAt(*tokens, i)) return true;
    return false;
}

}  // namespace korvant
