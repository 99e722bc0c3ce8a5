// Expressions of every operator over every kind of operand.
#include "support/script_generators.h"

namespace korvant::test {

namespace {

constexpr const char* kPrelude = R"(
enum E { one, two = 5 }
funcdef int Fn(int);
funcdef void Done();
interface I { int get(); }
class C : I {
    int v = 5; double d; string s; int[] a; C@ next; E e;
    C() {} C(int x) { v = x; }
    int get() { return v; } int get(int x) const { return x; }
    int prop { get const { return v; } set { v = value; } }
    int opIndex(int i) { return i; }
    C@ opAdd(const C &in other) { return this; }
    int opCmp(const C &in other) { return v - other.v; }
    C &opAssign(const C &in other) { v = other.v; return this; }
    int opConv() { return v; } string opImplConv() { return s; }
    int opCall(int x) { return x; }
}
class D : C { int w; void only() {} }
namespace n { int g = 2; int f(int x = 3) { return x; } class K { int k; } }
const int kc = 7; int gi = 1; double gd = 2.5; string gs = "g"; C gc; C@ gh; int[] ga = {1, 2};
int f1(int a) { return a; } int f2(int a, int b = 2) { return a + b; } void v0() {}
int fr(int &in a, string &out b) { return a; } void fio(C &inout c) {} C@ fh(C@ h) { return h; }
int byName(int first = 1, string second = "s", C@ third = null) { return first; }
I@ fi() { return C(); } C fc() { return C(); } int[] fa() { return ga; } Fn@ ff() { return f1; }
)";

constexpr const char* kLocals =
    "int i = 1; uint u = 2; int8 i8 = 3; uint64 u64 = 4; int64 i64 = -5; float f = 1.5f; "
    "double d = 2.5; bool b = true; E e = one; string s = \"abc\"; string@ sh = s; int[] a = {1, "
    "2};"
    " int[]@ ah = a; C c; C@ h = c; C@ nh; D dd; D@ dh = dd; I@ ih = c; Fn@ fn = f1; Done@ dn; "
    "C@[] ca = {c, null}; string[] sa = {\"x\"}; Object o; Object@ oh = o; const C@ ch = c; "
    "const int ci = 3; int[][] aa = {{1}, {2}}; n::K k;\n";

constexpr const char* kOperands[] = {"i",
                                     "u",
                                     "i8",
                                     "u64",
                                     "i64",
                                     "f",
                                     "d",
                                     "b",
                                     "e",
                                     "s",
                                     "sh",
                                     "a",
                                     "ah",
                                     "c",
                                     "h",
                                     "nh",
                                     "dd",
                                     "dh",
                                     "ih",
                                     "fn",
                                     "dn",
                                     "ca",
                                     "sa",
                                     "o",
                                     "oh",
                                     "ch",
                                     "ci",
                                     "aa",
                                     "k",
                                     "null",
                                     "null",
                                     "null",
                                     "1",
                                     "0",
                                     "-1",
                                     "2.5",
                                     "1.5f",
                                     "true",
                                     "false",
                                     "\"t\"",
                                     "'x'",
                                     "\"\"",
                                     "one",
                                     "E::two",
                                     "E",
                                     "C",
                                     "int",
                                     "string",
                                     "f1",
                                     "f2",
                                     "v0",
                                     "fr",
                                     "gi",
                                     "gc",
                                     "gh",
                                     "ga",
                                     "n::g",
                                     "n::f",
                                     "n",
                                     "::gi",
                                     "kc",
                                     "nope",
                                     "this",
                                     "super",
                                     "void",
                                     "auto",
                                     "0xFFFFFFFFFFFFFFFF",
                                     "1e308",
                                     "2147483648",
                                     "{1, 2}",
                                     "{}",
                                     "{{1}, {2}}",
                                     "{null}",
                                     "c.v",
                                     "h.next",
                                     "h.prop",
                                     "c.a",
                                     "a[0]",
                                     "ca[1]",
                                     "s[0]",
                                     "sa[0]",
                                     "fi()",
                                     "fc()",
                                     "fa()",
                                     "ff()",
                                     "v0()",
                                     "C()",
                                     "C(3)",
                                     "D()",
                                     "ih.get()",
                                     "c.get",
                                     "c.get()",
                                     "int[]",
                                     "int[](3)",
                                     "Fn(f1)",
                                     "Fn(c.get)",
                                     "o.getTitle()",
                                     "function(x) { return x; }",
                                     "function() { }",
                                     "function(int x) { return x; }",
                                     "D",
                                     "gs",
                                     "k.k",
                                     "byName(third: c)",
                                     "byName(second: \"x\", first: 2)",
                                     "n::f()",
                                     "n::K()",
                                     "kc",
                                     "@h",
                                     "@null"};

constexpr const char* kBinary[] = {"+",   "-",   "*",    "/",  "%",  "**",  "&",   "|",   "^",
                                   "<<",  ">>",  ">>>",  "&&", "||", "^^",  "and", "or",  "xor",
                                   "==",  "!=",  "<",    ">",  "<=", ">=",  "is",  "!is", "=",
                                   "+=",  "-=",  "*=",   "/=", "%=", "**=", "&=",  "|=",  "^=",
                                   "<<=", ">>=", ">>>=", ".",  "::", ",",   "?",   ":"};

constexpr const char* kPrefix[] = {"-", "+", "~", "!", "not ", "++", "--", "@", "@@", "- -"};
constexpr const char* kPostfix[] = {"++",        "--",     ".x",      ".get()", ".v",
                                    "[0]",       "[null]", "()",      "(1)",    "(null)",
                                    "[]",        ".next",  "[{1}]",   "(,)",    ".length()",
                                    ".opAdd(c)", "[1, 2]", "[\"k\"]", "(x: 1)"};
constexpr const char* kTypes[] = {"int",
                                  "uint8",
                                  "int64",
                                  "float",
                                  "double",
                                  "bool",
                                  "string",
                                  "string@",
                                  "E",
                                  "C",
                                  "C@",
                                  "I@",
                                  "I",
                                  "D@",
                                  "Fn@",
                                  "Fn",
                                  "int[]",
                                  "int[]@",
                                  "C@[]",
                                  "Object",
                                  "Object@",
                                  "auto",
                                  "auto@",
                                  "void",
                                  "array<string>",
                                  "const C@",
                                  "const int",
                                  "nope",
                                  "n::K",
                                  "C@@",
                                  "array<C@>@",
                                  "const string@",
                                  "int@",
                                  "const string"};
constexpr const char* kFunctions[] = {"f1",
                                      "f2",
                                      "v0",
                                      "fr",
                                      "fio",
                                      "fh",
                                      "byName",
                                      "n::f",
                                      "Print",
                                      "sqrt",
                                      "StrToUpper",
                                      "c.get",
                                      "h.get",
                                      "a.insertLast",
                                      "a.resize",
                                      "sa.find",
                                      "fn",
                                      "dn",
                                      "C",
                                      "D",
                                      "string",
                                      "nope",
                                      "o.addProperty",
                                      "ca.insertLast",
                                      "int",
                                      "Fn",
                                      "array<int>",
                                      "E",
                                      "I",
                                      "c",
                                      "s",
                                      "null",
                                      "super",
                                      "StrFind",
                                      "fc",
                                      "ih.get"};

class Expressions {
  public:
    explicit Expressions(Choices& choices) : choices_(choices) {}

    std::string script() {
        std::string text = kPrelude;
        if (choices_.oneIn(6)) text += global() + "\n";
        text += "int main() {\n" + std::string(kLocals);
        const std::uint32_t count = 1 + choices_.below(4);
        for (std::uint32_t i = 0; i < count; ++i) text += statement() + "\n";
        return text + "return 0;\n}\n";
    }

  private:
    std::string operand() { return choices_.one(kOperands); }
    std::string type() { return choices_.one(kTypes); }

    std::string expression(int depth = 0) {
        if (depth > 3) return operand();
        const std::string first = depth == 0 || choices_.oneIn(3) ? inner(depth) : operand();
        return first;
    }

    std::string inner(int depth) {
        switch (choices_.below(11)) {
            case 0:
                return choices_.one(kPrefix) + expression(depth + 1);
            case 1:
                return expression(depth + 1) + choices_.one(kPostfix);
            case 2:
                return "(" + expression(depth + 1) + ")";
            case 3:
                return condition() + " ? " + expression(depth + 1) + " : " + expression(depth + 1);
            case 4:
                return "cast<" + type() + ">(" + expression(depth + 1) + ")";
            case 5:
                return type() + "(" + expression(depth + 1) + ")";
            case 6:
                return call(depth + 1);
            default:
                return expression(depth + 1) + " " + choices_.one(kBinary) + " " +
                       expression(depth + 1);
        }
    }

    std::string condition() { return choices_.oneIn(3) ? operand() : "b"; }

    std::string call(int depth) {
        std::string text = choices_.one(kFunctions) + "(";
        const std::uint32_t count = choices_.below(4);
        for (std::uint32_t i = 0; i < count; ++i) {
            if (i > 0) text += ", ";
            if (choices_.oneIn(8)) text += choices_.oneIn(2) ? "second: " : "a: ";
            text += expression(depth);
        }
        return text + ")";
    }

    std::string statement() {
        switch (choices_.below(16)) {
            case 0:
                return type() + " x = " + expression() + ";";
            case 1:
                return type() + " x(" + expression() + ");";
            case 2:
                return "if (" + expression() + ") i = 2;";
            case 3:
                return "while (" + expression() + ") break;";
            case 4:
                return "for (" + type() + " x = " + expression() + "; " + expression() + "; " +
                       expression() + ") break;";
            case 5:
                return "switch (" + expression() + ") { case " + expression() + ": break; }";
            case 6:
                return "return " + expression() + ";";
            case 7:
                return "do i++; while (" + expression() + ");";
            case 8:
                return type() + " x = " + expression() + ", y = x, z(x);";
            case 9:
                return "const " + type() + " x = " + expression() + ";";
            case 10:
                return "@" + operand() + " = " + expression() + ";";
            case 11:
                return "try { " + expression() + "; } catch { " + expression() + "; }";
            case 12:
                return "{ " + type() + "[] x = {" + expression() + ", " + expression() +
                       "}; x[0]; }";
            default:
                return expression() + ";";
        }
    }

    std::string global() {
        switch (choices_.below(7)) {
            case 0:
                return "void g(" + type() + " x = " + expression() + ") { } void gg() { g(); }";
            case 1:
                return "enum G { ga1 = " + expression() + ", ga2 }";
            case 2:
                return "class G { " + type() + " m = " + expression() + "; } G theG;";
            case 3:
                return type() + " g() { return " + expression() + "; }";
            case 4:
                return type() + " &g() { return " + expression() + "; }";
            case 5:
                return "const " + type() + " gx = " + expression() + ";";
            default:
                return type() + " gx = " + expression() + ", gy(" + expression() + ");";
        }
    }

    Choices& choices_;
};

}  // namespace

std::string faultyExpressions(Choices& choices) {
    return Expressions(choices).script();
}

}  // namespace korvant::test
