// Whole programs with one token broken.
#include "support/script_generators.h"

namespace korvant::test {

namespace {

/// Writes a program that mostly builds.
class Program {
  public:
    explicit Program(Choices& choices) : choices_(choices) {}

    std::string text() {
        std::string all =
            "enum Kind { low, high = 7, other = high + 1 }\n"
            "funcdef int Handler(int, string &in);\n"
            "interface Shape { double area(); void name(string &out text); }\n";
        const std::uint32_t parts = 2 + choices_.below(4);
        for (std::uint32_t i = 0; i < parts; ++i) all += part(i);
        all += "int handle(int n, string &in s) { return n + int(s.length()); }\n";
        all +=
            "int main() {\n  int n = 3; double x = 0.5; string s = \"abc\"; int[] a = {1, 2, 3};\n";
        const std::uint32_t statements = 3 + choices_.below(8);
        for (std::uint32_t i = 0; i < statements; ++i) all += "  " + statement(0) + "\n";
        return all + "  return n;\n}\n";
    }

  private:
    std::string part(std::uint32_t i) {
        const std::string id = std::to_string(i);
        switch (choices_.below(8)) {
            case 0:
                return "mixin class Named" + id +
                       " { string label = \"m\"; void rename(const string "
                       "&in to) { label = to; } int opIndex(uint at) const { return int(at); } }\n"
                       "class With" +
                       id + " : Named" + id +
                       ", Shape { double area() { return 1; } "
                       "void name(string &out text) { text = label; } }\n";
            case 1:
                return "class Box" + id +
                       " { private int w = 1; protected double[] list = {1.5}; "
                       "Box" +
                       id + "() {} Box" + id +
                       "(int width, const string &in t = \"t\") { w "
                       "= width; } ~Box" +
                       id +
                       "() { w = 0; } int width { get const { return w; } "
                       "set { w = value; } } double get_at(uint i) const property { return "
                       "list[i]; "
                       "} bool opEquals(const Box" +
                       id +
                       " &in o) const { return w == o.w; } }\n"
                       "class Big" +
                       id + " : Box" + id + " { Big" + id +
                       "() { super(2); } int "
                       "twice() final { return width * 2; } }\n";
            case 2:
                return "namespace lib" + id +
                       " { const double half = 0.5; int count = 0; int next("
                       "int step = 1) { count += step; return count; } namespace deep { enum Sort "
                       "{ "
                       "up, down } } }\n";
            case 3:
                return "class List" + id + " { List" + id +
                       "@ next; Handler@ call; int value; List" + id +
                       "(int v) { value = v; } List" + id + "@ add(List" + id +
                       "@ to) { @next = "
                       "to; return this; } int each(Handler@ f) { return f is null ? 0 : f(value, "
                       "\"e\"); } }\nint run" +
                       id + "() { List" + id + "@ l = List" + id +
                       "(1); "
                       "@l.call = Handler(handle); return l.add(List" +
                       id + "(2)).each(l.call); }\n";
            case 4:
                return "int sum" + id +
                       "(const int[] &in values, int from = 0, int to = -1) { int all "
                       "= 0; for (uint i = from; i < values.length(); i++) { if (to >= 0 && int(i) "
                       "> "
                       "to) break; else all += values[i]; } return all; }\nint total" +
                       id + " = sum" + id + "({1, 2}, to: 1);\n";
            case 5:
                return "abstract class Base" + id +
                       " { int v; void set(int &in x) { v = x; } } final "
                       "class Last" +
                       id + " : Base" + id +
                       " { void set(int &in x) override { "
                       "Base" +
                       id + "::set(x + 1); } int opCall(int a) { return a * v; } Last" + id +
                       " &opAddAssign(int a) { v += a; return this; } int opConv() { return v; } "
                       "string opImplConv() { return \"\" + v; } }\n";
            case 6:
                return "Handler@ make" + id +
                       "(int sort) { if (sort == 0) return null; return "
                       "function(n, s) { return n * 2; }; }\nint use" +
                       id + " = make" + id + "(1)(2, \"s\");\n";
            default:
                return "string text" + id + " = \"a\" + 1 + 'b'; const float[][] grid" + id +
                       " = {{1, 2}, {3}}; uint64 bits" + id + " = 0xFF << 3 | 1;\nKind kind" + id +
                       "(int x) { switch (x) { case low: return high; case 1: case high: break; "
                       "default: return other; } return Kind(x); }\n";
        }
    }

    std::string statement(int depth) {
        switch (choices_.below(depth > 2 ? 8U : 15U)) {
            case 0:
                return "n += int(x * 2) % 5 - (s.length() > 2 ? 1 : 0);";
            case 1:
                return "s = StrToUpper(s) + n + \" \" + x;";
            case 2:
                return "a.insertLast(n); a.sortAsc(); n = a.find(2);";
            case 3:
                return "Handler@ h = handle; n = h(n, s); @h = null; if (h !is null) n = h(1, "
                       "\"\");";
            case 4:
                return "int[]@ view = a; @view = a; view[0] = -view[1]++; auto copy = view;";
            case 5:
                return "Object o; o.setTitle(s); Object@ p = o; s = p.getTitle(); @p = @o;";
            case 6:
                return "Print(\"n = \" + n + \"\\n\");";
            case 7:
                return "const string[] words = {\"a\", 'b', \"\"}; s += words[words.length() - 1];";
            case 8:
                return "for (int i = 0, j = 9; i < 3 && j > 0; i++, --j) {" + statement(depth + 1) +
                       " if (i == 2) continue; }";
            case 9:
                return "while (n < 4) { n++; " + statement(depth + 1) + " break; }";
            case 10:
                return "try { " + statement(depth + 1) + " a[1000] = 1; } catch { " +
                       statement(depth + 1) + " }";
            case 11:
                return "switch (n) { case 0: " + statement(depth + 1) +
                       " break; case 1: case -2: { n "
                       "= 1; } default: n = int(low); }";
            case 12:
                return "do { " + statement(depth + 1) + " n--; } while (n > 0 || false);";
            case 13:
                return "{ double y = x ** 2; bool same = y == x ^^ !(n is null); if (same) " +
                       statement(depth + 1) + " else n = 0; }";
            default:
                return "{ Handler@ f = function(k, t) { return k + int(t.length()); }; n = f(1, "
                       "s); }";
        }
    }

    Choices& choices_;
};

}  // namespace

std::string brokenProgram(Choices& choices) {
    const std::string text = Program(choices).text();
    return choices.oneIn(12) ? text : editedScript(text, choices);
}

}  // namespace korvant::test
