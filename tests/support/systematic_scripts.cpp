// Every type, in every way it can come into a function or out of one, in every use.
#include <cctype>

#include "support/script_generators.h"

namespace korvant::test {

namespace {

struct TypeCase {
    const char* type;   ///< as it is declared
    const char* plain;  ///< without its handle, for what is made of it
    const char* value;  ///< an expression that gives one
};

constexpr TypeCase kSystematicTypes[] = {
    {"int", "int", "3"},
    {"uint8", "uint8", "3"},
    {"int64", "int64", "3"},
    {"float", "float", "1.5f"},
    {"double", "double", "1.5"},
    {"bool", "bool", "true"},
    {"E", "E", "two"},
    {"string", "string", "\"abc\""},
    {"string@", "string", "\"abc\" + 1"},
    {"Object", "Object", "Object()"},
    {"Object@", "Object", "Object()"},
    {"C", "C", "C()"},
    {"C@", "C", "C()"},
    {"const C@", "C", "C()"},
    {"D@", "D", "D()"},
    {"I@", "I", "C()"},
    {"Fn@", "Fn", "f1"},
    {"int[]", "int[]", "int[](3)"},
    {"int[]@", "int[]", "int[](3)"},
    {"C@[]", "C@[]", "C@[](2)"},
    {"string[]@", "string[]", "string[](2)"},
};

/// How a parameter is passed; T is the type.
constexpr const char* kPassings[] = {"T p",    "T &in p",       "T &out p",    "T &inout p",
                                     "T & p",  "const T &in p", "const T & p", "const T p",
                                     "T &+ p", "const T &in+ p"};

/// What is done with p. T is its type, P the type without handle, V another value.
constexpr const char* kUses[] = {"p;",
                                 "T l = p;",
                                 "P l = p;",
                                 "P@ l = p;",
                                 "P@ l; @l = p;",
                                 "P@ l; @l = @p; @l = p; @p;",
                                 "T l = V; l = p;",
                                 "T l = V; p = l;",
                                 "T l = V; @p = l;",
                                 "@p = p;",
                                 "@p = null;",
                                 "p = null;",
                                 "p = V;",
                                 "p = p;",
                                 "p();",
                                 "p(1);",
                                 "int l = p(1); l += p(2);",
                                 "p.v;",
                                 "p.v = 4;",
                                 "p.get();",
                                 "p.get(1);",
                                 "p[0];",
                                 "p[0] = p[0];",
                                 "p[0]++;",
                                 "byValue(p);",
                                 "byIn(p);",
                                 "byOut(p);",
                                 "byInOut(p);",
                                 "byHandle(p);",
                                 "back(p);",
                                 "T l = back(p); l = back(p);",
                                 "if (p is null) g = 1;",
                                 "if (p !is null && p is p) g = 1;",
                                 "bool l = p == p;",
                                 "bool l = p < p;",
                                 "p + p;",
                                 "p += p;",
                                 "-p;",
                                 "!p;",
                                 "~p;",
                                 "p++;",
                                 "++p;",
                                 "T l = true ? p : p;",
                                 "T l = g > 5 ? V : p;",
                                 "P@ l = g > 5 ? null : p;",
                                 "cast<P>(p);",
                                 "I@ l = cast<I>(p); if (l !is null) l.get();",
                                 "P(p);",
                                 "int(p);",
                                 "string l = \"\" + p;",
                                 "T[] l = {p, p}; l[0];",
                                 "P@[] l; l.insertLast(p);",
                                 "T[] l; l.insertLast(p); l[0] = p; l.insertLast(l[0]);",
                                 "auto l = p; auto@ k = p;",
                                 "switch (p) { case 1: g = 2; }",
                                 "for (; p;) break;",
                                 "while (p !is null) break;",
                                 "Fn@ l = Fn(p.get); if (l !is null) l(1);",
                                 "Fn@ l = p; l(1);",
                                 "H l; l.m = p; p = l.m;",
                                 "H l; @l.m = p; @p = l.m;",
                                 "gT = p; @gT = p;",
                                 "return;",
                                 "p.length();",
                                 "p.next = p; @p.next = p;",
                                 "T l = p; T k = l; @l = k; l = k;",
                                 "for (int i = 0; i < 3; i++) { T l = p; @l = p; }",
                                 "try { p.get(); p.v = 3; } catch { g = 3; }",
                                 "P@ l = p; P@ k = l; @k = p; @p = k; @l = null;",
                                 "p.opAssign(p);",
                                 "(p) = (p);",
                                 "@(p);",
                                 "Done@ l = function() { g = 4; }; l(); p;",
                                 "T l(p); P k(p);",
                                 "const T l = p; const P@ k = p;"};

constexpr const char* kSystematicPrelude = R"(
enum E { one, two }
funcdef int Fn(int);
funcdef void Done();
interface I { int get(); }
class C : I { int v = 5; C@ next; int get() { return v; } int get(int x) { return v + x; } }
class D : C { int w = 6; }
int g = 0;
int f1(int a) { return a + 1; }
)";

/// What a use may call; only what it names is there, because some types cannot have some of it.
struct Helper {
    const char* name;
    const char* text;
};
constexpr Helper kHelpers[] = {
    {"byValue", "void byValue(T a) {}"},
    {"byIn", "void byIn(const T &in a) {}"},
    {"byOut", "void byOut(T &out a) {}"},
    {"byInOut", "void byInOut(T &inout a) {}"},
    {"byHandle", "void byHandle(P@ a) {}"},
    {"back", "T back(T a) { return a; }"},
    {"gT", "T gT = V;"},
    {"H", "class H { T m = V; }"},
    {"made", "T made() { T x = V; return x; }"},
    {"whole", "T whole = V; T &ref() { return whole; } const T &cref() { return whole; }"},
    {"handed", "P@ handed() { return V; }"},
};

/// Where p comes from. U stands for the use, A for the way of passing, X for a variable to pass.
struct Place {
    const char* code;
    const char* call;   ///< in main()
    const char* named;  ///< what stands for p in the use; null: p itself
};
constexpr Place kPassed[] = {
    {"void use(A) { U }", "use(x);", nullptr},
    {"void use(A) { U }", "use(V); use(made());", nullptr},
    {"T use(A) { U return p; }", "T y = use(x); use(x);", nullptr},
    {"class M { int n; void use(A) { U } } funcdef void Call(A);",
     "M m; Call@ c = Call(m.use); c(x);", nullptr},
    {"funcdef void Call(A); void use(A) { U } void through(Call@ &in c, T z) { c(z); }",
     "Call@ c = use; c(x); through(c, x); through(use, x);", nullptr},
    {"funcdef void Call(A);", "Call@ c = function(p) { U }; c(x);", nullptr},
};
constexpr Place kElsewhere[] = {
    {"void use() { U }", "use();", "made()"},
    {"void use() { whole; U }", "use();", "ref()"},
    {"void use() { whole; U }", "use();", "cref()"},
    {"void use() { U }", "use();", "handed()"},
    {"class M { T p = V; void use() { U } }", "M m; m.use();", nullptr},
    {"class M { T p = V; } M theM; void use() { M@ h = theM; U }", "use();", "h.p"},
    {"class M { T p = V; } M@ theM; void use() { M@ h = theM; U }", "use();", "h.p"},
    {"T p = V; void use() { U }", "use();", nullptr},
    {"void use() { T p = V; U }", "use();", nullptr},
    {"void use() { T p; U }", "use();", nullptr},
    {"void use() { T[] ar(2); ar[0] = V; U }", "use();", "ar[0]"},
    {"T under = V; T get_p() property { return under; } void set_p(T z) property { under = z; } "
     "void use() { U }",
     "use();", nullptr},
    {"class M { T p = V; } class N : M { void use() { U } }", "N n; n.use(); M@ b = n;", nullptr},
};

std::string filled(std::string_view pattern, const TypeCase& of) {
    std::string text;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const auto alone = [&](std::size_t at) {
            const auto word = [&](std::size_t k) {
                return k < pattern.size() &&
                       (std::isalnum(static_cast<unsigned char>(pattern[k])) != 0 ||
                        pattern[k] == '_');
            };
            return (at == 0 || !word(at - 1)) && !word(at + 1);
        };
        if (pattern[i] == 'T' && alone(i))
            text += of.type;
        else if (pattern[i] == 'P' && alone(i))
            text += of.plain;
        else if (pattern[i] == 'V' && alone(i))
            text += of.value;
        else
            text += pattern[i];
    }
    return text;
}

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size())
        text.replace(at, what.size(), by);
    return text;
}

/// `name` instead of the word p.
std::string renamed(std::string_view use, const char* name) {
    if (name == nullptr) return std::string(use);
    std::string text;
    for (const std::string& token : tokenTexts(use)) text += token == "p" ? name : token;
    return text;
}

std::string script(const TypeCase& type, const Place& place, const char* passing, const char* use) {
    const std::string used = filled(renamed(use, place.named), type);
    std::string code = replaced(place.code, "U ", used + " ");
    if (passing != nullptr) code = replaced(code, "(A)", "(" + std::string(passing) + ")");
    code = filled(code, type);
    const std::string call = filled(replaced(place.call, "U ", used + " "), type);
    std::string text = kSystematicPrelude;
    for (const Helper& helper : kHelpers)
        if ((code + call).find(helper.name) != std::string::npos)
            text += filled(helper.text, type) + "\n";
    text += code + "\nint main() {\n" + std::string(type.type) + " x = " + type.value +
            ";\nfor (int i = 0; i < 3; i++) { " + call + " }\nreturn 0;\n}\n";
    return text;
}

constexpr std::size_t kTypeCount = std::size(kSystematicTypes);
constexpr std::size_t kUseCount = std::size(kUses);
constexpr std::size_t kPassedCount = std::size(kPassed) * std::size(kPassings);

}  // namespace

std::size_t systematicScripts() {
    return kTypeCount * kUseCount * (kPassedCount + std::size(kElsewhere));
}

std::string systematicScript(std::size_t index) {
    const TypeCase& type = kSystematicTypes[index % kTypeCount];
    index /= kTypeCount;
    const char* const use = kUses[index % kUseCount];
    const std::size_t form = index / kUseCount % (kPassedCount + std::size(kElsewhere));
    if (form >= kPassedCount) return script(type, kElsewhere[form - kPassedCount], nullptr, use);
    return script(type, kPassed[form / std::size(kPassings)],
                  kPassings[form % std::size(kPassings)], use);
}

}  // namespace korvant::test
