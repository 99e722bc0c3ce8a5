// Programs that build, of arrays, strings and property objects at their edges.
#include "support/script_generators.h"

namespace korvant::test {

namespace {

constexpr const char* kEdgeTypes = R"(
int made = 0;
class Item {
    int v; int[] own; Item@ other;
    Item() { v = made++; }
    Item(int x) { v = x; }
    ~Item() { made--; }
    int opCmp(const Item &in o) const { step(); return v - o.v; }
    bool opEquals(const Item &in o) const { step(); return v == o.v; }
    Item &opAssign(const Item &in o) { step(); v = o.v; return this; }
}
class Angry { Angry() { if (mood++ % 7 == 3) { int z = 0; mood /= z; } } int opCmp(const Angry &in o) { int[] q; return q[9]; } }
int mood = 0, steps = 0;
Item[] items; Item@[] handles; int[] shared = {5, 4, 3, 2, 1};
funcdef bool Less(const Item@ &in, const Item@ &in);
bool oddLess(const Item@ &in a, const Item@ &in b) { step(); return (steps & 1) == 0; }
void step() {
    steps++;
    if (steps % 13 == 5) items.resize(items.length() / 2);
    if (steps % 17 == 3) items.insertLast(Item(steps));
    if (steps % 29 == 7 && handles.length() > 0) handles.removeLast();
    if (steps % 101 == 0) { int[] q; q[1] = 1; }
}
)";

constexpr const char* kNumbers[] = {"0",
                                    "1",
                                    "2",
                                    "3",
                                    "4",
                                    "-1",
                                    "n",
                                    "100",
                                    "1000",
                                    "0xFFFFFFFF",
                                    "0x80000000",
                                    "0x7FFFFFFF",
                                    "-2",
                                    "0x90000000",
                                    "65",
                                    "a.length()",
                                    "a.length() - 1",
                                    "s.length()"};
constexpr const char* kTexts[] = {"s",        "\"\"",         "\"abc\"",       "t[0]",     "s + s",
                                  "\"%s%n\"", "o.getTitle()", "StrToUpper(s)", "\"\" + x", "h"};

class Edges {
  public:
    explicit Edges(Choices& choices) : choices_(choices) {}

    std::string program() {
        std::string all =
            std::string(kEdgeTypes) +
            "int main() {\nint n = 3; double x = 1.5; bool b = false; string s = "
            "\"abc\"; string@ h = s; int[] a = {3, 1, 2}; int8[] e = {1, 2}; double[] d "
            "= {2.5, 0.5}; string[] t = {\"b\", \"a\"}; int[][] aa = {{1}, {}}; bool[] "
            "bits = {true}; Object o; Object[] oo; items.resize(3); Item@ one = "
            "Item(1);\n";
        const std::uint32_t count = 3 + choices_.below(10);
        for (std::uint32_t i = 0; i < count; ++i) all += guarded() + "\n";
        return all + "return 0;\n}\n";
    }

  private:
    std::string number() { return choices_.one(kNumbers); }
    std::string text() { return choices_.one(kTexts); }

    std::string guarded() {
        const std::string what = choices_.oneIn(12)
                                     ? "for (int i = 0; i < 40; i++) { " + statement() + " }"
                                     : statement();
        return choices_.oneIn(10) ? what : "try { " + what + " } catch { n++; }";
    }

    std::string statement() {
        switch (choices_.below(4)) {
            case 0:
                return numbers();
            case 1:
                return objects();
            case 2:
                return strings();
            default:
                return properties();
        }
    }

    std::string numbers() {
        static constexpr const char* kArrays[] = {"a", "e", "d", "bits", "shared"};
        const std::string it = choices_.one(kArrays);
        switch (choices_.below(14)) {
            case 0:
                return it + ".resize(" + number() + ");";
            case 1:
                return it + ".reserve(" + number() + ");";
            case 2:
                return it + ".removeRange(" + number() + ", " + number() + ");";
            case 3:
                return it + ".sortAsc(" + number() + ", " + number() + ");";
            case 4:
                return it + ".insertAt(" + number() + ", " + it + ");";
            case 5:
                return it + ".removeAt(" + number() + ");";
            case 6:
                return it + " = " + it + "; " + it + ".reverse(); " + it + ".sortDesc();";
            case 7:
                return "n = a.find(" + number() + ", " + number() + "); n = a.findByRef(a[0]);";
            case 8:
                return "a[" + number() + "] = a[" + number() + "];";
            case 9:
                return "{ int[] fresh(" + number() + ", 7); a = fresh; }";
            case 10:
                return "aa.insertLast(a); aa.insertAt(" + number() + ", aa); aa[" + number() +
                       "].resize(" + number() + ");";
            case 11:
                return it + ".removeLast(); b = " + it + ".isEmpty(); b = " + it + " == " + it +
                       ";";
            case 12:
                return "a.insertAt(" + number() + ", " + number() + "); a.insertLast(1);";
            default:
                return "{ int[][] deep(" + number() + "); deep.resize(" + number() + "); }";
        }
    }

    std::string objects() {
        switch (choices_.below(15)) {
            case 0:
                return "items.sortAsc();";
            case 1:
                return "items.sortDesc(" + number() + ", " + number() + ");";
            case 2:
                return "n = items.find(Item(" + number() + ")); b = items == items;";
            case 3:
                return "items = items; items.insertAt(" + number() + ", items);";
            case 4:
                return "items.resize(" + number() + " & 63); items.insertLast(Item(n));";
            case 5:
                return "handles.insertLast(one); handles.insertLast(null); handles.sortAsc();";
            case 6:
                return "handles.sort(oddLess, " + number() + ", " + number() + ");";
            case 7:
                return "{ Angry[] angry(" + number() +
                       " & 31); angry.sortAsc(); angry.resize(20); }";
            case 8:
                return "n = handles.findByRef(one); handles.reverse(); @handles[" + number() +
                       "] = one;";
            case 9:
                return "items[" + number() + "] = items[0]; items[0].own.insertLast(" + number() +
                       ");";
            case 10:
                return "handles.resize(" + number() + " & 63); @one = handles[" + number() + "];";
            case 11:
                return "@one.other = one; @one = one.other; @one = one; one.own = a;";
            case 12:
                return "handles.removeRange(" + number() + ", " + number() + "); n = handles[0].v;";
            case 13:
                return "{ array<Item> copy = items; copy.removeAt(" + number() +
                       "); items = copy; }";
            default:
                return "handles.sort(function(p, q) { return p.v < q.v; });";
        }
    }

    std::string strings() {
        switch (choices_.below(10)) {
            case 0:
                return "s = StrSubstring(s, " + number() + ", " + number() + ");";
            case 1:
                return "s = StrInsert(s, " + text() + ", " + number() + ");";
            case 2:
                return "s[" + number() + "] = 65;";
            case 3:
                return "s.resize(" + number() + ");";
            case 4:
                return "n = StrFind(s, " + text() + ", " + number() + ");";
            case 5:
                return "t.insertLast(" + text() + "); t.sortAsc(); n = t.find(" + text() + ");";
            case 6:
                return "t.resize(" + number() + " & 255); t[" + number() + "] = s;";
            case 7:
                return "s += " + text() + "; @h = s; h += h;";
            case 8:
                return "t.insertAt(" + number() + ", t); t.sortDesc(); t.reverse();";
            default:
                return "s = " + text() + " + " + text() + "; b = s == " + text() + ";";
        }
    }

    std::string properties() {
        switch (choices_.below(9)) {
            case 0:
                return "o.addProperty(" + text() + ", " + text() + ", " + number() + ", s, b);";
            case 1:
                return "o.addProperty(" + text() + ", s, " + text() + ", s, true);";
            case 2:
                return "o.setProperty(" + text() + ", " + number() + ");";
            case 3:
                return "o.getProperty(" + text() + ", x);";
            case 4:
                return "oo.insertLast(o); oo.resize(" + number() + " & 7); oo[" + number() +
                       "] = o;";
            case 5:
                return "o.addErrorConstraint(s, " + text() + ", s); b = o.edit();";
            case 6:
                return "{ Object q = o; o.addGroup(s, q, true, true, true, true); "
                       "o.addGroupElement(q); }";
            case 7:
                return "o.addClass(" + text() + ", true); o.addCategory(" + text() + ");";
            default:
                return "o.setTitle(" + text() + "); s = o.getTitle();";
        }
    }

    Choices& choices_;
};

}  // namespace

std::string edgeProgram(Choices& choices) {
    return Edges(choices).program();
}

}  // namespace korvant::test
