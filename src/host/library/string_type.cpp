#include "host/library/string_type.h"

#include <cstdint>

#include "base/text/number_text.h"
#include "host/engine/method_call.h"
#include "host/engine/script_string.h"

namespace korvant {

namespace {

ScriptString* orOutOfMemory(ScriptString* made) {
    if (made == nullptr) raiseInScript("Out of memory");
    return made;
}

/// A literal reaches a script's `string &inout` parameter as it stands in the program. Changing it
/// there would change the program.
bool mayChange(const ScriptString& string) {
    if (string.constant()) raiseInScript("A text constant cannot be changed");
    return !string.constant();
}

/// What scripts call on an object; a failed change raises and leaves the text as it was.
class StringMethods : public ScriptString {
  public:
    void addReference() noexcept { addRef(); }
    void releaseReference() noexcept { release(); }
    ScriptString* opAssign(const ScriptString& other) noexcept {
        return mayChange(*this) ? done(assign(other.text)) : this;
    }
    ScriptString* opAddAssign(const ScriptString& other) noexcept {
        return mayChange(*this) ? done(append(other.text)) : this;
    }
    std::uint32_t length() noexcept { return static_cast<std::uint32_t>(text.size()); }
    void resizeTo(std::uint32_t bytes) noexcept {
        if (mayChange(*this)) done(resize(bytes));
    }

  private:
    ScriptString* done(bool changed) noexcept {
        if (!changed) raiseInScript("Out of memory");
        return this;
    }
};

ScriptString* makeEmpty() {
    return orOutOfMemory(ScriptString::create());
}
ScriptString* makeCopy(const ScriptString& other) {
    return orOutOfMemory(ScriptString::create(other.text));
}

bool opEquals(const ScriptString* self, const ScriptString& other) {
    return self->text == other.text;
}

std::int32_t opCmp(const ScriptString* self, const ScriptString& other) {
    const int order = std::string_view(self->text).compare(other.text);
    return (order > 0) - (order < 0);
}

ScriptString* opAdd(const ScriptString* self, const ScriptString& other) {
    return orOutOfMemory(ScriptString::join(self->text, other.text));
}

/// Where the byte of a text constant may be read and, without any effect, written. Some in turn,
/// because one expression may hold several references.
std::uint8_t* readOnlyByte(char byte) {
    static std::uint8_t bytes[16];
    static unsigned next = 0;
    std::uint8_t& copy = bytes[next++ % 16];
    copy = static_cast<std::uint8_t>(byte);
    return &copy;
}

/// A null reference is only ever answered with an exception set: the engine would follow it.
std::uint8_t* opIndex(std::uint32_t index, ScriptString* self) {
    if (index >= self->text.size()) {
        raiseInScript("Out of range");
        return nullptr;
    }
    if (self->constant()) return readOnlyByte(self->text[index]);
    return reinterpret_cast<std::uint8_t*>(&self->text[index]);
}

std::string numberText(double value) {
    return formatGeneral(value);
}
std::string numberText(float value) {
    return formatGeneral(value);
}
std::string numberText(std::int32_t value) {
    return formatInt(value);
}
std::string numberText(std::uint32_t value) {
    return formatUint(value);
}

std::string numberText(bool value) {
    return value ? "true" : "false";
}
std::string numberText(std::int8_t value) {
    return formatInt(value);
}
std::string numberText(std::int16_t value) {
    return formatInt(value);
}
std::string numberText(std::uint8_t value) {
    return formatUint(value);
}
std::string numberText(std::uint16_t value) {
    return formatUint(value);
}
std::string numberText(std::int64_t value) {
    return std::to_string(value);
}
std::string numberText(std::uint64_t value) {
    return std::to_string(value);
}

template <class Number>
ScriptString* assignNumber(Number value, ScriptString* self) {
    if (mayChange(*self) && !self->assign(numberText(value))) raiseInScript("Out of memory");
    return self;
}

template <class Number>
ScriptString* appendNumber(Number value, ScriptString* self) {
    if (mayChange(*self) && !self->append(numberText(value))) raiseInScript("Out of memory");
    return self;
}

template <class Number>
ScriptString* addNumber(const ScriptString* self, Number value) {
    return orOutOfMemory(ScriptString::join(self->text, numberText(value)));
}

template <class Number>
ScriptString* addToNumber(Number value, const ScriptString* self) {
    return orOutOfMemory(ScriptString::join(numberText(value), self->text));
}

constexpr char kFull[] = "\"Out of memory\" when the text would become too long.";
constexpr char kNoSuchByte[] = "\"Out of range\" at or beyond the length.";

const FunctionRow kLife[] = {
    factoryRow<makeEmpty>("string @f()", "A new, empty text.", "string s;"),
    factoryRow<makeCopy>("string @f(const string &in)", "A copy of a text.", "string s(other);",
                         kFull),
    selfRow<&StringMethods::addReference>("void f()", "One more handle.", "", "", asBEHAVE_ADDREF),
    selfRow<&StringMethods::releaseReference>("void f()", "One handle less.", "", "",
                                              asBEHAVE_RELEASE),
    selfRow<&StringMethods::opAssign>("string &opAssign(const string &in)", "Takes over a text.",
                                      "s = \"depth\";", kFull),
    selfRow<&StringMethods::opAddAssign>("string &opAddAssign(const string &in)", "Appends a text.",
                                         "s += \" m\";", kFull),
};

const FunctionRow kMethods[] = {
    firstRow<opEquals>("bool opEquals(const string &in) const",
                       "True when both have the same bytes.",
                       "if (s == \"yes\") Print(\"agreed\\n\");"),
    firstRow<opCmp>("int opCmp(const string &in) const",
                    "Order by bytes; a text sorts behind its own beginning.",
                    "if (a < b) Print(a + \" comes first\\n\");"),
    firstRow<opAdd>("string@ opAdd(const string &in) const", "Both texts, one after the other.",
                    "s = first + last;", kFull),
    lastRow<opIndex>(kIndexDeclaration, "The byte at a position, to read or to change.",
                     "s[0] = 65;", kNoSuchByte),
    lastRow<opIndex>(kConstIndexDeclaration, "The byte at a position of a constant text.",
                     "uint8 first = s[0];", kNoSuchByte),
    selfRow<&StringMethods::length>("uint length() const", "The number of bytes.",
                                    "if (s.length() > 0) Print(s);"),
    selfRow<&StringMethods::resizeTo>("void resize(uint)", "Cuts the text, or adds zero bytes.",
                                      "s.resize(8);", kFull),
    lastRow<assignNumber<double>>("string &opAssign(double)", "Takes over a number as text.",
                                  "s = 0.5;"),
    lastRow<appendNumber<double>>("string &opAddAssign(double)", "Appends a number as text.",
                                  "s += 0.5;", kFull),
    firstRow<addNumber<double>>("string@ opAdd(double) const", "The text, then a number.",
                                "s = \"x = \" + 0.5;", kFull),
    lastRow<addToNumber<double>>("string@ opAdd_r(double) const", "A number, then the text.",
                                 "s = 0.5 + \" m\";", kFull),
    lastRow<assignNumber<float>>("string &opAssign(float)", "Takes over a number as text.",
                                 "s = 0.5f;"),
    lastRow<appendNumber<float>>("string &opAddAssign(float)", "Appends a number as text.",
                                 "s += 0.5f;", kFull),
    firstRow<addNumber<float>>("string@ opAdd(float) const", "The text, then a number.",
                               "s = \"x = \" + 0.5f;", kFull),
    lastRow<addToNumber<float>>("string@ opAdd_r(float) const", "A number, then the text.",
                                "s = 0.5f + \" m\";", kFull),
    lastRow<assignNumber<std::int32_t>>("string &opAssign(int)", "Takes over an integer as text.",
                                        "s = 5;"),
    lastRow<appendNumber<std::int32_t>>("string &opAddAssign(int)", "Appends an integer as text.",
                                        "s += 5;", kFull),
    firstRow<addNumber<std::int32_t>>("string@ opAdd(int) const", "The text, then an integer.",
                                      "s = \"hole \" + 5;", kFull),
    lastRow<addToNumber<std::int32_t>>("string@ opAdd_r(int) const", "An integer, then the text.",
                                       "s = 5 + \" m\";", kFull),
    lastRow<assignNumber<std::uint32_t>>("string &opAssign(uint)", "Takes over an integer as text.",
                                         "s = s.length();"),
    lastRow<appendNumber<std::uint32_t>>("string &opAddAssign(uint)", "Appends an integer as text.",
                                         "s += s.length();", kFull),
    firstRow<addNumber<std::uint32_t>>("string@ opAdd(uint) const", "The text, then an integer.",
                                       "s = \"bytes: \" + s.length();", kFull),
    lastRow<addToNumber<std::uint32_t>>("string@ opAdd_r(uint) const", "An integer, then the text.",
                                        "s = s.length() + \" bytes\";", kFull),
    // So that no integer is cut on its way to a text.
    lastRow<assignNumber<std::int64_t>>("string &opAssign(int64)", "Takes over an integer as text.",
                                        "s = int64(5000000000);"),
    lastRow<appendNumber<std::int64_t>>("string &opAddAssign(int64)", "Appends an integer as text.",
                                        "s += int64(5000000000);", kFull),
    firstRow<addNumber<std::int64_t>>("string@ opAdd(int64) const", "The text, then an integer.",
                                      "s = \"x = \" + int64(5000000000);", kFull),
    lastRow<addToNumber<std::int64_t>>("string@ opAdd_r(int64) const", "An integer, then the text.",
                                       "s = int64(5000000000) + \" m\";", kFull),
    lastRow<assignNumber<std::uint64_t>>(
        "string &opAssign(uint64)", "Takes over an integer as text.", "s = uint64(5000000000);"),
    lastRow<appendNumber<std::uint64_t>>("string &opAddAssign(uint64)",
                                         "Appends an integer as text.", "s += uint64(5000000000);",
                                         kFull),
    firstRow<addNumber<std::uint64_t>>("string@ opAdd(uint64) const", "The text, then an integer.",
                                       "s = \"x = \" + uint64(5000000000);", kFull),
    lastRow<addToNumber<std::uint64_t>>("string@ opAdd_r(uint64) const",
                                        "An integer, then the text.",
                                        "s = uint64(5000000000) + \" m\";", kFull),
    lastRow<assignNumber<bool>>("string &opAssign(bool)",
                                "Takes over a truth value as text, \"true\" or \"false\".",
                                "s = (a < b);"),
    lastRow<appendNumber<bool>>("string &opAddAssign(bool)",
                                "Appends a truth value as text, \"true\" or \"false\".",
                                "s += (a < b);", kFull),
    firstRow<addNumber<bool>>("string@ opAdd(bool) const", "The text, then \"true\" or \"false\".",
                              "s = \"x = \" + (a < b);", kFull),
    lastRow<addToNumber<bool>>("string@ opAdd_r(bool) const",
                               "\"true\" or \"false\", then the text.", "s = (a < b) + \" m\";",
                               kFull),
};

/// The small integers would otherwise fit 32 and 64 bits alike, and an expression with two
/// functions that fit as well does not build. The manual says all that is to be said at the larger
/// ones.
const FunctionRow kSmallMethods[] = {
    lastRow<assignNumber<std::int8_t>>("string &opAssign(int8)", "", ""),
    lastRow<appendNumber<std::int8_t>>("string &opAddAssign(int8)", "", ""),
    firstRow<addNumber<std::int8_t>>("string@ opAdd(int8) const", "", ""),
    lastRow<addToNumber<std::int8_t>>("string@ opAdd_r(int8) const", "", ""),
    lastRow<assignNumber<std::uint8_t>>("string &opAssign(uint8)", "", ""),
    lastRow<appendNumber<std::uint8_t>>("string &opAddAssign(uint8)", "", ""),
    firstRow<addNumber<std::uint8_t>>("string@ opAdd(uint8) const", "", ""),
    lastRow<addToNumber<std::uint8_t>>("string@ opAdd_r(uint8) const", "", ""),
    lastRow<assignNumber<std::int16_t>>("string &opAssign(int16)", "", ""),
    lastRow<appendNumber<std::int16_t>>("string &opAddAssign(int16)", "", ""),
    firstRow<addNumber<std::int16_t>>("string@ opAdd(int16) const", "", ""),
    lastRow<addToNumber<std::int16_t>>("string@ opAdd_r(int16) const", "", ""),
    lastRow<assignNumber<std::uint16_t>>("string &opAssign(uint16)", "", ""),
    lastRow<appendNumber<std::uint16_t>>("string &opAddAssign(uint16)", "", ""),
    firstRow<addNumber<std::uint16_t>>("string@ opAdd(uint16) const", "", ""),
    lastRow<addToNumber<std::uint16_t>>("string@ opAdd_r(uint16) const", "", ""),
};

}  // namespace

int registerStringType(asIScriptEngine* engine) {
    int first = engine->RegisterObjectType("string", 0, asOBJ_REF);
    if (first >= 0) markOwnType(engine, "string");
    const int results[] = {registerMethods(engine, "string", kLife), registerStringLiterals(engine),
                           registerMethods(engine, "string", kMethods),
                           registerMethods(engine, "string", kSmallMethods)};
    for (const int result : results)
        if (result < 0 && first >= 0) first = result;
    return first < 0 ? first : 0;
}

std::span<const FunctionRow> stringTypeRows() {
    return kMethods;
}

}  // namespace korvant
