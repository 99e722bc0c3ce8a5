// What scripts hand to registered functions arrives there, whatever its kind, order and number.
#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>

#include "host/engine/engine_compat.h"

namespace korvant::test {
namespace {

double mixed(int a, double b, std::int8_t c, float d, std::int64_t e, bool f, const double& g) {
    return a + b * 10 + c * 100 + static_cast<double>(d) * 1000 + static_cast<double>(e) +
           (f ? 0.5 : 0) + g;
}
std::int64_t manyNumbers(int a, int b, int c, std::int64_t d, int e, int f, int g, int h) {
    return a + b * 10 + c * 100 + d * 1000 + e * 10000 + f * 100000 + g * 1000000 + h * 10000000;
}
double manyReals(double a, double b, double c, double d, double e, double f, double g, double h,
                 double i, int j) {
    return a + b * 2 + c * 3 + d * 4 + e * 5 + f * 6 + g * 7 + h * 8 + i * 9 + j * 10;
}
float half(float value) {
    return value / 2;
}
bool isNegative(std::int16_t value) {
    return value < 0;
}
std::uint64_t largest() {
    return UINT64_MAX;
}
int typeOf(const void*, int type, int after) {
    return type * 10 + after;
}
void throwing(int) {
    throw std::runtime_error("thrown");
}

/// Too large for registers, and with a constructor: made where the caller says.
struct Pair {
    Pair(int a, int b) : first(a), second(b) {}
    ~Pair() { second = 0; }
    int first, second;
    double third = 0.25;
};
void makeEmptyPair(Pair* place) {
    new (place) Pair(0, 0);
}
Pair makePair(int first, int second) {
    return Pair(first, second);
}
void destroyPair(Pair* pair) {
    pair->~Pair();
}
int firstOf(const Pair* pair) {
    return pair->first;
}
int digits(int hundreds, int tens, const Pair* ones) {
    return hundreds * 100 + tens * 10 + ones->second;
}

struct Base {
    virtual ~Base() = default;
    virtual int named(int add) { return 1 + add; }
    double scaled(double by, int add) { return number * by + add; }
    Pair pairWith(int second) { return Pair(number, second); }
    Base* self() { return this; }
    int number = 7;
};
struct Derived final : Base {
    int named(int add) override { return 2 + add; }
};
Derived thing;
Base* theThing(bool there) {
    return there ? &thing : nullptr;
}
int firstAndLast(Base* self, int add) {
    return self->number * 10 + add;
}
int lastOfFour(int a, double b, int c, Base* self) {
    return self->number * 1000 + a * 100 + static_cast<int>(b) * 10 + c;
}

class NativeArguments : public ::testing::Test {
  protected:
    NativeArguments() {
        const auto global = [&](const char* declaration, const asSFuncPtr& function) {
            ASSERT_GE(engine->RegisterGlobalFunction(declaration, function, asCALL_CDECL), 0);
        };
        const auto method = [&](const char* type, const char* declaration,
                                const asSFuncPtr& function, asDWORD convention) {
            ASSERT_GE(engine->RegisterObjectMethod(type, declaration, function, convention), 0);
        };
        engine->RegisterObjectType("Pair", sizeof(Pair), asOBJ_VALUE | asGetTypeTraits<Pair>());
        engine->RegisterObjectBehaviour("Pair", asBEHAVE_CONSTRUCT, "void f()",
                                        asFUNCTION(makeEmptyPair), asCALL_CDECL_OBJFIRST);
        engine->RegisterObjectBehaviour("Pair", asBEHAVE_DESTRUCT, "void f()",
                                        asFUNCTION(destroyPair), asCALL_CDECL_OBJFIRST);
        engine->RegisterObjectType("Thing", 0, asOBJ_REF | asOBJ_NOCOUNT);
        global("double mixed(int, double, int8, float, int64, bool, const double &in)",
               asFUNCTION(mixed));
        global("int64 manyNumbers(int, int, int, int64, int, int, int, int)",
               asFUNCTION(manyNumbers));
        global(
            "double manyReals(double, double, double, double, double, double, double, double, "
            "double, int)",
            asFUNCTION(manyReals));
        global("float half(float)", asFUNCTION(half));
        global("bool isNegative(int16)", asFUNCTION(isNegative));
        global("uint64 largest()", asFUNCTION(largest));
        global("int typeOf(const ?&in, int)", asFUNCTION(typeOf));
        global("void throwing(int)", asFUNCTION(throwing));
        global("Pair makePair(int, int)", asFUNCTION(makePair));
        global("Thing@ theThing(bool)", asFUNCTION(theThing));
        method("Pair", "int first() const", asFUNCTION(firstOf), asCALL_CDECL_OBJFIRST);
        method("Pair", "int digits(int, int) const", asFUNCTION(digits), asCALL_CDECL_OBJLAST);
        method("Thing", "int named(int)", asMETHOD(Base, named), asCALL_THISCALL);
        method("Thing", "double scaled(double, int)", asMETHOD(Base, scaled), asCALL_THISCALL);
        method("Thing", "Pair pairWith(int)", asMETHOD(Base, pairWith), asCALL_THISCALL);
        method("Thing", "Thing@ self()", asMETHOD(Base, self), asCALL_THISCALL);
        method("Thing", "int first(int)", asFUNCTION(firstAndLast), asCALL_CDECL_OBJFIRST);
        method("Thing", "int last(int, double, int)", asFUNCTION(lastOfFour), asCALL_CDECL_OBJLAST);
        engine->RegisterGlobalFunction("int own(int)", asMETHOD(Base, named),
                                       asCALL_THISCALL_ASGLOBAL, &thing);
    }
    ~NativeArguments() override { engine->ShutDownAndRelease(); }

    /// What the expression is as a double; the text of the exception where there is one.
    std::string valueOf(const std::string& expression) {
        asIScriptModule* const module = engine->GetModule("m", asGM_ALWAYS_CREATE);
        const std::string text = "double f() { return " + expression + "; }";
        module->AddScriptSection("s", text.c_str());
        if (module->Build() < 0) return "does not build: " + expression;
        asIScriptContext* const context = engine->CreateContext();
        context->Prepare(module->GetFunctionByName("f"));
        const bool finished = context->Execute() == asEXECUTION_FINISHED;
        const std::string value = finished ? std::to_string(context->GetReturnDouble())
                                           : std::string(context->GetExceptionString());
        context->Release();
        return value;
    }

    asIScriptEngine* engine = asCreateScriptEngine();
};

TEST_F(NativeArguments, OfEveryKindAndOrderArrive) {
    EXPECT_EQ(valueOf("mixed(1, 2.5, -3, 0.5f, int64(5000000000), true, 0.25)"),
              "5000000226.750000");
    EXPECT_EQ(valueOf("manyNumbers(1, 2, 3, 4, 5, 6, 7, 8)"), "87654321.000000");
    EXPECT_EQ(valueOf("manyReals(1, 2, 3, 4, 5, 6, 7, 8, 9, 10)"), "385.000000");
    EXPECT_EQ(valueOf("half(2.5f)"), "1.250000");
    EXPECT_EQ(valueOf("isNegative(-5) && !isNegative(5) ? 1 : 0"), "1.000000");
    EXPECT_EQ(valueOf("largest() == 0xFFFFFFFFFFFFFFFF ? 1 : 0"), "1.000000");
    EXPECT_EQ(valueOf("typeOf(true, 7)"), "17.000000");
    EXPECT_EQ(valueOf("makePair(3, 4).first() * 1000 + makePair(5, 6).digits(7, 8)"),
              "3786.000000");
}

TEST_F(NativeArguments, TheObjectIsWhereTheFunctionWantsIt) {
    EXPECT_EQ(valueOf("theThing(true).named(40)"), "42.000000") << "of the derived class";
    EXPECT_EQ(valueOf("own(40)"), "42.000000");
    EXPECT_EQ(valueOf("theThing(true).self().scaled(2.5, 3)"), "20.500000");
    EXPECT_EQ(valueOf("theThing(true).pairWith(6).first()"), "7.000000");
    EXPECT_EQ(valueOf("theThing(true).first(5)"), "75.000000");
    EXPECT_EQ(valueOf("theThing(true).last(1, 2, 3)"), "7123.000000");
    EXPECT_EQ(valueOf("theThing(false).last(1, 2, 3)"), "Null pointer access");
    EXPECT_EQ(valueOf("theThing(false).named(1)"), "Null pointer access");
}

TEST_F(NativeArguments, WhatAFunctionThrowsIsTheScriptsException) {
    const std::string text = "double f() { throwing(3); return 1; }";
    asIScriptModule* const module = engine->GetModule("m", asGM_ALWAYS_CREATE);
    module->AddScriptSection("s", text.c_str());
    ASSERT_GE(module->Build(), 0);
    asIScriptContext* const context = engine->CreateContext();
    context->Prepare(module->GetFunctionByName("f"));
    EXPECT_EQ(context->Execute(), asEXECUTION_EXCEPTION);
    EXPECT_STREQ(context->GetExceptionString(), "Caught an exception from the application");
    context->Release();
}

}  // namespace
}  // namespace korvant::test
