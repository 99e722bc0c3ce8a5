// Scripts from a grammar, compiled and run under the strict limits: whatever the library is asked,
// the run ends, the host lives and the next script runs. With KORVANT_FUZZ_SHOW in the environment
// the scripts are shown, for a finding that is looked into.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>

#include "host/run/script_session.h"
#include "host/services/null_services.h"
#include "module/families.h"

namespace {

using namespace korvant;

/// What is found in long programs is found in many short ones, and sooner.
constexpr std::size_t kProgramBytes = 1500;
constexpr int kDeepest = 2;
constexpr int kUnitsBetweenChecks = 16;

/// Writes a script; every byte of the input chooses a production.
class Writer {
  public:
    Writer(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}

    std::string program() {
        std::string text =
            "class Node { Node@ next; string name; ~Node() { count += 1; } }\n"
            "int count = 0;\n"
            "int main() {\nint n = 3; double x = 1.5; string s = \"abc\"; string@ h = s;"
            " int[] a; string[] t; Object o; Node node; bool b = false;\n";
        while (at_ != end_ && text.size() < kProgramBytes) text += statement(0);
        return text + "return n;\n}\n";
    }

  private:
    std::uint8_t byte() { return at_ == end_ ? 0 : *at_++; }
    template <std::size_t Size>
    std::string one(const char* const (&of)[Size]) {
        return of[byte() % Size];
    }

    std::string integer() {
        static constexpr const char* kEdges[] = {"n",
                                                 "0",
                                                 "-1",
                                                 "2147483647",
                                                 "-2147483647 - 1",
                                                 "int(x)",
                                                 "3",
                                                 "s.length()",
                                                 "StrSize(s)",
                                                 "a.length()",
                                                 "1000000",
                                                 "StrFind(s, h, n)",
                                                 "StrAsc(s)",
                                                 "o.getGroupElement(s)"};
        return one(kEdges);
    }
    std::string real() {
        static constexpr const char* kEdges[] = {"x",       "1e308",    "-0.5",      "0.0",
                                                 "sqrt(x)", "jn(n, x)", "pow(x, x)", "x / 0.0"};
        return one(kEdges);
    }
    std::string text() {
        switch (byte() % 10) {
            case 0:
                return "s";
            case 1:
                return "h";
            case 2:
                return "StrToUpper(s)";
            case 3:
                return "StrSubstring(s, " + integer() + ", " + integer() + ")";
            case 4:
                return "StrInsert(s, " + text() + ", " + integer() + ")";
            case 5:
                return "(s + " + real() + ")";
            case 6:
                return "(\"\" + " + integer() + ")";
            case 7:
                return "\"a>0\"";
            case 8:
                return "o.getTitle()";
            default:
                return "\"%n%s\"";
        }
    }

    std::string objectCall() {
        switch (byte() % 9) {
            case 0:
                return "o.addProperty(" + text() + ", s, " + real() + ", s, true);";
            case 1:
                return "o.addProperty(" + text() + ", s, " + integer() + ", s, b);";
            case 2:
                return "o.addErrorConstraint(s, " + text() + ", s);";
            case 3:
                return "o.getProperty(s, x);";
            case 4:
                return "o.setProperty(s, " + integer() + ");";
            case 5:
                return "o.addClass(s, true); o.addCategory(s);";
            case 6:
                return "{ Object e = o; o.addGroup(s, e, true, true, true, true); "
                       "o.addGroupElement(e); }";
            case 7:
                return "o.setTitle(" + text() + ");";
            default:
                return "b = o.edit();";
        }
    }

    std::string statement(int depth) {
        switch (byte() % 14) {
            case 0:
                return "s += " + text() + ";\n";
            case 1:
                return "s = " + text() + ";\n";
            case 2:
                return "@h = " + text() + ";\n";
            case 3:
                return "s[" + integer() + "] = 65;\n";
            case 4:
                return "s.resize(" + integer() + " & 0xFFFF);\n";
            case 5:
                return "n = " + integer() + ";\n";
            case 6:
                return "x = " + real() + ";\n";
            case 7:
                return "Print(" + text() + ");\n";
            case 8:
                return "a.insertLast(" + integer() + "); a.sortAsc(); t.insertLast(s);\n";
            case 9:
                return "n = a[" + integer() + "];\n";
            case 10:
                return "@node.next = node; node = Node();\n";
            case 11:
                return objectCall() + "\n";
            case 12:
                return depth > kDeepest ? "Input(n);\n"
                                        : "try {\n" + statement(depth + 1) + "} catch { n++; }\n";
            default:
                if (depth > kDeepest) return "SetMaxRunTime(50);\n";
                return "for (int i" + std::to_string(depth) + " = 0; i" + std::to_string(depth) +
                       " < 3; i" + std::to_string(depth) + "++) {\n" + statement(depth + 1) +
                       statement(depth + 1) + "}\n";
        }
    }

    const std::uint8_t* at_;
    const std::uint8_t* end_;
};

struct Host {
    Host() {
        engine = asCreateScriptEngine();
        session.setServices({});
        Limits limits = strictLimits();
        limits.stringBytes = std::size_t{64} << 10;  // reached in a moment
        limits.runBytes = std::size_t{1} << 20;
        limits.hardCeilingMs = 100;
        session.setLimits(limits);
        context = session.configure(engine, registrationOrder());
        if (context == nullptr) std::abort();
    }
    ScriptSession& session = moduleSession();
    asIScriptEngine* engine = nullptr;
    asIScriptContext* context = nullptr;
};

}  // namespace

/// What scripts leave to the engine's collector looks like a leak after each of them, and looking
/// for one takes ten times as long as the script. That nothing grows is tested elsewhere.
extern "C" const char* __asan_default_options() {
    return "detect_leaks=0";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Host host;
    if (size > 400) return 0;
    static int units = 0;
    const std::string script = Writer(data, size).program();
    static const bool shown = std::getenv("KORVANT_FUZZ_SHOW") != nullptr;
    if (shown) std::fputs(script.c_str(), stderr);
    host.session.runApplication(host.engine, host.context, script, nullptr);
    host.session.abandon(host.context);  // what a run leaves behind is its own finding
    if (++units % kUnitsBetweenChecks != 0) return 0;
    if (host.session.runApplication(host.engine, host.context, "int main() { return 0; }", nullptr)
            .failed())
        std::abort();
    return 0;
}
