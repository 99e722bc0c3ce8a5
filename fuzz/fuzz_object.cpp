// Property objects under calls in any order: bytes are read as calls, their names, numbers and
// texts. Nothing crashes, and what a copy holds is what its original held.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "korvantide/script_object.h"

namespace {

/// Reads the input as values; zeros behind its end.
class Values {
  public:
    Values(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}
    bool more() const { return at_ != end_; }
    std::uint8_t byte() { return at_ == end_ ? 0 : *at_++; }
    bool flag() { return byte() % 2 != 0; }
    std::int32_t number() {
        static constexpr std::int32_t kEdges[] = {0, 1, -1, 2, 7, 1000, INT32_MAX, INT32_MIN};
        const std::uint8_t one = byte();
        return one < 128 ? kEdges[one % 8] : one - 128;
    }
    std::string name() { return std::string(1, static_cast<char>('a' + byte() % 8)); }
    std::string text() {
        static const char* const kTexts[] = {"",     "a>0",      "b=1&&c<2", "sqrt(d)/0", "((a",
                                             "Text", "<b>x</i>", "D\351bit", "min(a;b)",  "%n%s"};
        return kTexts[byte() % std::size(kTexts)];
    }

  private:
    const std::uint8_t* at_;
    const std::uint8_t* end_;
};

void addProperty(ScriptObject& object, Values& in) {
    const std::string name = in.name(), label = in.text();
    switch (in.byte() % 7) {
        case 0:
            object.addProperty(name, label, in.number(), in.text(), in.flag());
            break;
        case 1:
            object.addProperty(name, label, in.number() / 3.0, in.text(), in.flag());
            break;
        case 2:
            object.addProperty(name, label, in.flag(), in.flag(), in.number() % 4L);
            break;
        case 3:
            object.addProperty(name, label, "text", in.flag(), in.flag());
            break;
        case 4:
            object.addProperty(name, label, "f", in.text().c_str(), in.flag(), true);
            break;
        case 5:
            object.addOption(in.text());
            break;
        default:
            object.addOptionProperty(name, label, in.number(), in.flag());
    }
}

void addRule(ScriptObject& object, Values& in) {
    const std::string name = in.name(), expression = in.text();
    switch (in.byte() % 6) {
        case 0:
            object.addErrorConstraint(name, expression, in.text());
            break;
        case 1:
            object.addWarningConstraint(name, expression, in.text());
            break;
        case 2:
            object.addEnableConstraint(name, expression);
            break;
        case 3:
            object.addHint(name, in.text());
            break;
        case 4:
            object.addComputation(name, expression);
            break;
        default:
            object.addTranslation(in.number(), expression, in.text());
    }
}

void setValue(ScriptObject& object, Values& in) {
    const std::string name = in.name();
    switch (in.byte() % 4) {
        case 0:
            object.setProperty(name, in.number());
            break;
        case 1:
            object.setProperty(name, in.number() / 7.0);
            break;
        case 2:
            object.setProperty(name, in.flag());
            break;
        default:
            object.setProperty(name, in.text());
    }
}

void walk(ScriptObject& object, Values& in) {
    std::string name;
    int index = 0;
    bool value = false;
    if (in.flag()) object.resetIterators();
    for (int i = 0; i < 20 && object.getNextClass(&name, &value); ++i)
        while (object.getNextCategory(&name))
            while (object.getNextProperty(&name, &index)) object.getPropertyType(index);
    object.getPropertyType(in.number());
    object.getPropertyName(in.number());
}

void groups(ScriptObject& object, ScriptObject& other, Values& in) {
    const std::string name = in.name();
    switch (in.byte() % 5) {
        case 0:
            object.addGroup(name, other, in.flag(), in.flag(), in.flag(), in.flag());
            break;
        case 1:
            object.addGroupElement(other);
            break;
        case 2:
            object.getGroup(name, in.number(), &other);
            break;
        case 3:
            object.setGroupElement(name, in.number());
            break;
        default:
            object.append(other);
    }
}

void rest(ScriptObject& object, ScriptObject& other, Values& in) {
    switch (in.byte() % 6) {
        case 0:
            object.addClass(in.name(), in.flag());
            break;
        case 1:
            object.addCategory(in.text());
            break;
        case 2:
            object.setTitle(in.text());
            break;
        case 3:
            object = other;
            break;
        case 4:
            object.setLocale(in.number() % 5);
            break;
        default:
            if (in.byte() % 4 == 0) object.clear();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 600) return 0;
    Values in(data, size);
    ScriptObject objects[3];
    while (in.more()) {
        const std::uint8_t call = in.byte();
        ScriptObject& object = objects[call % 3];
        ScriptObject& other = objects[in.byte() % 3];
        // Groups copy whole objects: a few doublings are enough.
        if (object.getPropertiesCount() > 200 || other.getPropertiesCount() > 200) object.clear();
        switch (call / 3 % 6) {
            case 0:
                addProperty(object, in);
                break;
            case 1:
                addRule(object, in);
                break;
            case 2:
                setValue(object, in);
                break;
            case 3:
                walk(object, in);
                break;
            case 4:
                groups(object, other, in);
                break;
            default:
                rest(object, other, in);
        }
    }
    for (ScriptObject& object : objects) {
        ScriptObject copy(object);
        if (copy.getPropertiesCount() != object.getPropertiesCount()) std::abort();
    }
    return 0;
}
