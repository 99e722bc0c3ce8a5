// What a host writes down is what it gets, on an object of ours and through the interface alone.
#include <cstddef>
#include <limits>

#include "host/engine/memory_budget.h"
#include "korvantide/script_object.h"
#include "object/script/foreign_stamp.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

std::string textOf(KorStamp& object, const char* name) {
    std::string value = "(none)";
    object.getProperty(name, &value);
    return value;
}

long numberOf(KorStamp& object, const char* name) {
    long value = -77;
    object.getProperty(name, &value);
    return value;
}

/// Every spelling that a host may choose.
template <class Stamp>
void fill(Stamp& object) {
    const std::size_t many = 3'000'000'000u;
    EXPECT_TRUE(object.addProperty("s", "S", "old", true, false));
    EXPECT_TRUE(object.addProperty("t", "T", std::string("of a string"), true, false));
    EXPECT_TRUE(object.addProperty("r", "R", 1.5, "m", true));
    EXPECT_TRUE(object.addProperty("f", "F", 0.5f, "m", true));
    EXPECT_TRUE(object.addProperty("i", "I", 7, "m", true));
    EXPECT_TRUE(object.addProperty("u", "U", 8u, "m", true));
    EXPECT_TRUE(object.addProperty("z", "Z", std::size_t{9}, std::string("m"), true));
    EXPECT_TRUE(object.addProperty("ll", "LL", -10LL, "m", true));
    EXPECT_TRUE(object.addProperty("big", "Big", many, nullptr, true));
    EXPECT_TRUE(object.addProperty("b", "B", true, true, -1));
    object.addOption("one");
    EXPECT_TRUE(object.addOptionProperty("o", "O", std::size_t{0}, true));
    EXPECT_TRUE(object.setProperty("s", "new"));
    EXPECT_TRUE(object.setProperty("u", 11u));
    EXPECT_TRUE(object.setProperty("z", std::size_t{12}));
    EXPECT_TRUE(object.setProperty("ll", -13LL));
    const char* const nothing = nullptr;
    EXPECT_TRUE(object.setProperty("t", nothing));
    EXPECT_FALSE(object.setProperty("none", "new"));
}

void expectFilled(KorStamp& object) {
    EXPECT_EQ(textOf(object, "s"), "new");
    EXPECT_EQ(textOf(object, "t"), "");
    EXPECT_EQ(numberOf(object, "i"), 7);
    EXPECT_EQ(numberOf(object, "u"), 11);
    EXPECT_EQ(numberOf(object, "z"), 12);
    EXPECT_EQ(numberOf(object, "ll"), -13);
    EXPECT_EQ(object.getPropertyTypeByName("s"), 3);
    EXPECT_EQ(object.getPropertyTypeByName("r"), 1);
    EXPECT_EQ(object.getPropertyTypeByName("f"), 1);
    EXPECT_EQ(object.getPropertyTypeByName("u"), 0);
    EXPECT_EQ(object.getPropertyTypeByName("b"), 2);
}

TEST(HostValues, AreStoredAsTheyAreWrittenDown) {
    ScriptObject own, seen;
    fill(own);
    expectFilled(own);
    EXPECT_EQ(numberOf(own, "big"), std::numeric_limits<std::int32_t>::max());
    fill<KorStamp>(seen);
    expectFilled(seen);
    const auto foreign = makeForeignStamp();
    fill(*foreign);
    expectFilled(*foreign);
}

TEST(HostValues, AForeignObjectWithoutRunTimeTypeIsAppended) {
    const auto foreign = makeForeignStamp();
    fill(*foreign);
    ScriptObject object;
    ASSERT_TRUE(object.append(*foreign));
    EXPECT_EQ(textOf(object, "s"), "new");
    EXPECT_EQ(numberOf(object, "u"), 11);
    EXPECT_EQ(object.getPropertiesCount(), foreign->getPropertiesCount());
}

class HostObjects : public ScriptFixture {
  protected:
    HostObjects() { ScriptObject::ranOutOfMemory(); }
    static void addMany(ScriptObject& object, int from, int to) {
        for (int i = from; i < to; ++i)
            if (!object.addProperty("p" + std::to_string(i), std::string(1000, 'x'), i, "", true))
                return;
    }
};

TEST_F(HostObjects, MadeBetweenRunsAreNotCharged) {
    Limits limits;
    limits.runBytes = 1 << 20;
    useLimits(limits);
    const std::size_t before = memoryBudget.used;
    ScriptObject object;
    addMany(object, 0, 3000);
    EXPECT_EQ(object.getPropertiesCount(), 3000);
    EXPECT_FALSE(ScriptObject::ranOutOfMemory());
    ScriptObject copy(object);
    EXPECT_EQ(memoryBudget.used, before);
    EXPECT_EQ(
        output("Object o; for (int i = 0; i < 50; i++) o.addProperty(\"p\" + i, \"\", i, \"\","
               " true); Print(\"\" + o.getPropertiesCount());"),
        "50");
}

TEST_F(HostObjects, RefusedByALimitAreToldFromATakenName) {
    static ScriptObject* kept = nullptr;
    Limits limits;
    limits.runBytes = 1 << 20;
    useLimits(limits);
    engine()->RegisterGlobalFunction("void fill()", asFUNCTION(+[] { addMany(*kept, 1, 3000); }),
                                     asCALL_CDECL);
    const std::size_t before = memoryBudget.used;
    {
        ScriptObject object;
        kept = &object;
        addMany(object, 0, 1);
        EXPECT_FALSE(object.addProperty("p0", "", 1, "", true));
        EXPECT_FALSE(ScriptObject::ranOutOfMemory());
        EXPECT_EQ(exceptionOf("fill();"), "Out of memory");
        EXPECT_TRUE(ScriptObject::ranOutOfMemory());
        EXPECT_FALSE(ScriptObject::ranOutOfMemory());
        EXPECT_GT(object.getPropertiesCount(), 100);
        EXPECT_LT(object.getPropertiesCount(), 3000);
    }
    EXPECT_LE(memoryBudget.used, before + 4096);
}

}  // namespace
}  // namespace korvant::test
