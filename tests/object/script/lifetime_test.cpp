// How long objects and their texts live, in C++ and in scripts. Run under the address sanitizer.
#include <gtest/gtest.h>

#include "host/engine/memory_budget.h"
#include "host/engine/script_string.h"
#include "korvantide/script_object.h"
#include "object/script/object_access.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

/// Counts the objects of this class that live.
class Watched : public ScriptObject {
  public:
    Watched() { ++alive; }
    Watched(const Watched& other) : ScriptObject(other) { ++alive; }
    ~Watched() override { --alive; }
    static int alive;
};
int Watched::alive = 0;

TEST(ObjectCount, GoesFromNothingToTheLastRelease) {
    auto* object = new Watched;
    EXPECT_EQ(object->referenceCount(), 0);
    object->addRef();
    object->addRef();
    EXPECT_EQ(object->referenceCount(), 2);
    object->release();
    EXPECT_EQ(Watched::alive, 1);
    object->release();
    EXPECT_EQ(Watched::alive, 0);
}

TEST(ObjectCount, ReleaseWithoutAReferenceCountsDownAndDeletesNothing) {
    Watched object;
    object.release();
    EXPECT_EQ(object.referenceCount(), -1);
    EXPECT_EQ(Watched::alive, 1);
    object.addRef();
    EXPECT_EQ(object.referenceCount(), 0);
}

/// A copy that only reported its source's count would be freed too early or never.
TEST(ObjectCount, OfTheSourceBelongsToACopy) {
    auto* object = new Watched;
    object->addRef();
    object->addRef();
    object->addRef();
    auto* copy = new Watched(*object);
    EXPECT_EQ(copy->referenceCount(), 3);
    copy->addRef();
    EXPECT_EQ(copy->referenceCount(), 4);
    EXPECT_EQ(Watched::alive, 2);
    copy->release();
    EXPECT_EQ(copy->referenceCount(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Watched::alive, 2);
        copy->release();
    }
    EXPECT_EQ(Watched::alive, 1);
    auto* assigned = new Watched;
    static_cast<ScriptObject&>(*assigned) = *object;
    EXPECT_EQ(assigned->referenceCount(), 3);
    for (int i = 0; i < 3; ++i) assigned->release();
    EXPECT_EQ(Watched::alive, 1);
    for (int i = 0; i < 3; ++i) object->release();
    EXPECT_EQ(Watched::alive, 0);
}

TEST(ObjectCount, OfAnObjectForScriptsIsOneWhateverIsCopiedOrAssigned) {
    ScriptObject source;
    source.addRef();
    source.addRef();
    ScriptObject* made = ObjectAccess::makeForScript();
    ScriptObject* copy = ObjectAccess::copyForScript(source);
    EXPECT_EQ(made->referenceCount(), 1);
    EXPECT_EQ(copy->referenceCount(), 1);
    *copy = source;
    EXPECT_EQ(copy->referenceCount(), 1);
    source.addGroupElement(source);
    EXPECT_TRUE(source.getGroup("", 0, made));
    EXPECT_EQ(made->referenceCount(), 1);
    made->release();
    copy->release();
}

TEST(ObjectTitle, IsAStringThatOutlivesObjectAndClear) {
    auto* object = new ScriptObject;
    object->setTitle("Pump");
    std::string* own = object->_getTitle();
    EXPECT_EQ(*own, "Pump");
    ScriptString* held = ObjectAccess::title(*object);
    EXPECT_EQ(&held->text, own);
    const ScriptObject copy(*object);
    object->clear();
    EXPECT_EQ(held->text, "");
    object->setTitle("Valve");
    EXPECT_EQ(held->text, "Valve");
    *object = copy;
    EXPECT_EQ(held->text, "Pump");
    EXPECT_EQ(object->_getTitle(), own);
    delete object;
    EXPECT_EQ(held->text, "Pump");
    held->release();
}

TEST(ObjectMemory, IsGivenBackToTheLastByte) {
    const std::size_t before = memoryBudget.used;
    memoryBudget.scriptRuns = true;
    {
        ScriptObject object;
        object.setTitle("a title that is long enough for a buffer of its own");
        object.addClass("Class", true);
        object.addCategory("Category");
        for (int i = 0; i < 100; ++i) {
            const std::string name = "p" + std::to_string(i);
            object.addOption("option");
            object.addOptionProperty(name, "Label", i, true);
            object.addErrorConstraint(name, name + ">0", "message");
            object.addHint(name, "hint");
            object.addTranslation(1, name, "Texte");
            object.setProperty(name, std::string(static_cast<std::size_t>(i) * 10, 'x'));
            object.setProperty(name, "short");
        }
        ScriptObject copy(object);
        copy.addGroup("Group", object, true, true, true, true);
        copy.addGroupElement(object);
        copy.append(object);
        object = copy;
        EXPECT_GT(memoryBudget.used, before + 50000);
        copy.clear();
        memoryBudget.scriptRuns = false;
    }
    EXPECT_EQ(memoryBudget.used, before);
}

class ObjectLifetimes : public ScriptInBothConventions {};
INSTANTIATE_TEST_SUITE_P(Conventions, ObjectLifetimes, ::testing::Bool(), conventionName);

/// What a count of 0 at the beginning, or a text inside an object, would turn into a use of freed
/// memory.
TEST_P(ObjectLifetimes, HandlesCopiesAndTextsOutliveTheirOwners) {
    frontend.text = "typed by the user, longer than a short string";
    const char* const kScripts[] = {
        // A handle to a variable, dropped and used again.
        R"(Object a; Object@ b = a; @b = null; a.addCategory("x");
           a.addProperty("p", "P", 1, "", true); Print("" + a.getPropertiesCount());)",
        // An object that only a handle holds.
        R"(Object@ b; { Object a; a.addProperty("p", "P", 1, "", true); @b = a; }
           Print("" + b.getPropertiesCount());)",
        // Arrays of handles and of objects.
        R"(Object@[] all; for (int i = 0; i < 50; i++) { Object one;
           one.addProperty("p" + i, "P", i, "", true); all.insertLast(one); }
           Object[] values(20); values[3].addProperty("q", "Q", 1, "", true);
           @all[7] = values[3]; values.resize(1); int sum = 0;
           for (uint i = 0; i < all.length(); i++) sum += all[i].getPropertiesCount();
           Print("" + sum / 50);)",
        // Copies, elements and layouts live on their own.
        R"(Object@ copy; { Object a; a.addProperty("p", "P", 1, "", true); Object b(a); @copy = b;
           copy.addGroup("G", a, true, true, true, true);
           for (int i = 0; i < 9; i++) copy.addGroupElement(a); }
           Object again(copy); @copy = null; Print("" + again.getPropertiesCount());)",
        // An object that holds itself, and is merged with itself.
        R"(Object a; a.addProperty("p", "P", 1, "", true); a.addGroup("G", a, true, true, true, true);
           a.addGroupElement(a); a.addGroupElement(a); a.append(a);
           Print("" + a.getPropertiesCount());)",
        // A title outlives its object, its clear() and a change through the handle.
        R"(string@ t; { Object a; a.setTitle("title"); @t = a.getTitle(); t += "!";
           Object b(a); a.clear(); @t = b.getTitle(); }
           t += "?"; string@ u = t; @t = null; Print("" + (u == "title!?" ? 1 : 0));)",
        // The answers of prompts are one text for all.
        R"(string@ t; { Object a; @t = a.prompt("Name", "x"); } Object b;
           string@ u = b.prompt("Name", "y"); b.clear(); Print(t == u ? "1" : "0");)",
        // By value through a function, and as a result.
        R"(Object a; a.addProperty("p", "P", 1, "", true); Object@ r = twice(a, a);
           a.clear(); Print("" + r.getPropertiesCount());)",
    };
    const std::string helper =
        "Object@ twice(Object a, Object@ b) { Object made(a); made.append(b); return made; }\n";
    for (const char* script : kScripts) {
        console.output.clear();
        ASSERT_TRUE(run(helper + "int main() {\n" + script + "\nreturn 0;\n}\n"))
            << script << messages() << session().lastFailure().text;
        EXPECT_EQ(console.output, "1") << script;
    }
}

TEST_P(ObjectLifetimes, TheLimitOfARunEndsInAnExceptionWithTheObjectAsItWas) {
    Limits limits;
    limits.runBytes = std::size_t{8} << 20;
    useLimits(limits);
    const char* const kScripts[] = {
        R"(for (int i = 0; ; i++) kept.addProperty("p" + i, "Label", i, "", true);)",
        R"(string s; for (int i = 0; i < 1000; i++) s += "0123456789";
           for (int i = 0; ; i++) kept.addOption(s);)",
        R"(for (int i = 0; ; i++) kept.addTranslation(1, "s" + i, "some text");)",
        R"(for (int i = 0; ; i++) kept.addErrorConstraint("p", "p>" + i, "message");)",
        R"(for (int i = 0; ; i++) kept.setGroupElement("g" + i, i);)",
        R"(kept.addGroup("g", kept, true, true, true, true); while (true) kept.addGroupElement(kept);)",
        R"(for (int i = 0; ; i++) { kept.addGroup("g" + i, kept, true, true, true, true); })",
        R"(Object@[] all; while (true) { Object one(kept); all.insertLast(one); })",
    };
    for (const char* script : kScripts) {
        const std::string text =
            "Object kept;\nint main() {\nkept.addProperty(\"p\", \"P\", 1, \"\", true);\n"
            "for (int i = 0; i < 20; i++) kept.addProperty(\"q\" + i, \"Q\", 1, \"\", true);\n" +
            std::string(script) + "\nreturn 0;\n}\n";
        EXPECT_FALSE(run(text)) << script;
        EXPECT_EQ(session().lastFailure().kind, RunFailure::Kind::exception) << script;
        const char* description = context()->GetExceptionString();
        const std::string said = description != nullptr ? description : "";
        EXPECT_TRUE(said == "Out of memory" || said == "Groups are nested too deep")
            << script << ": " << said << messages();
    }
}

/// Sixty-four levels are allowed; more would make copying and destroying them deep recursions.
TEST_P(ObjectLifetimes, GroupsNestTo64Levels) {
    const std::string nest =
        "Object inner; inner.addProperty(\"p\", \"P\", 1, \"\", true);\n"
        "for (int i = 0; i < LEVELS; i++) { Object outer; "
        "outer.addGroup(\"g\" + i, inner, true, true, true, true); outer.addGroupElement(inner);\n"
        "Object@ next = Object(outer); @keep = next; inner.clear(); inner.append(outer); }\n";
    const auto script = [&](const std::string& levels) {
        std::string body = nest;
        body.replace(body.find("LEVELS"), 6, levels);
        return "Object@ keep;\nint main() {\n" + body + "return 0;\n}\n";
    };
    EXPECT_TRUE(run(script("63"))) << messages() << session().lastFailure().text;
    EXPECT_FALSE(run(script("64")));
    EXPECT_STREQ(context()->GetExceptionString(), "Groups are nested too deep");
}

TEST_P(ObjectLifetimes, AFailedReadGivesDefinedValues) {
    EXPECT_EQ(
        output(R"(Object a; string s = "x"; int i = 5; double d = 5; float f = 5; bool b = true;
        a.getProperty("n", s); a.getProperty("n", i); a.getProperty("n", d); a.getProperty("n", f);
        a.getProperty("n", b); Print("[" + s + "]" + i + d + f + (b ? "t" : "f"));
        a.getNextClass(s, b); s = "x"; b = true; i = 9; a.getNextClass(s, b);
        Print("[" + s + "]" + (b ? "t" : "f")); s = "x"; a.getNextCategory(s); Print("[" + s + "]");
        s = "x"; a.getNextProperty(s, i); Print("[" + s + "]" + i);
        s = "x"; a.getPropertyName(-2147483648, s); Print("[" + s + "]");
        Print("" + a.getPropertyType(-1) + a.getPropertyType(2147483647));)"),
        "[]000f[]f[][]0[]-1-1");
}

}  // namespace
}  // namespace korvant::test
