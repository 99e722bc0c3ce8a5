#include "debug/value_text.h"

#include <algorithm>
#include <cmath>

#include "base/text/number_text.h"
#include "base/text/text_encoding.h"
#include "debug/frames.h"
#include "host/engine/type_view.h"

namespace korvant {

namespace {

constexpr char kHex[] = "0123456789abcdef";
constexpr char kMore[] = "...";
constexpr int kDeepest = 16;
constexpr std::size_t kPreview = 100;                  // bytes of a shortened object or array
constexpr std::size_t kWhole = std::size_t{64} << 20;  // of one that is wanted whole

std::string hexByte(unsigned char byte) {
    return {'\\', 'x', kHex[byte >> 4], kHex[byte & 15]};
}

void appendEscaped(std::string& text, char byte) {
    switch (byte) {
        case '"':
            text += "\\\"";
            break;
        case '\\':
            text += "\\\\";
            break;
        case '\n':
            text += "\\n";
            break;
        case '\t':
            text += "\\t";
            break;
        case '\r':
            text += "\\r";
            break;
        default:
            if (static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F)
                text += hexByte(static_cast<unsigned char>(byte));
            else
                text.push_back(byte);
    }
}

std::string hexOf(std::uint64_t value, std::uint32_t bytes) {
    std::string text = "0x";
    for (std::uint32_t digit = bytes * 2; digit-- > 0;)
        text.push_back(kHex[(value >> 4 * digit) & 15]);
    return text;
}

std::string integerText(const ValueView& value, const ValueFormat& format) {
    const std::int64_t number = integerOf(value);
    if (format.hex) return hexOf(static_cast<std::uint64_t>(number), value.bytes);
    return value.kind == ValueKind::unsignedInteger
               ? std::to_string(static_cast<std::uint64_t>(number))
               : std::to_string(number);
}

std::string enumText(asIScriptEngine& engine, const ValueView& value, const ValueFormat& format) {
    const asITypeInfo* const type = engine.GetTypeInfoById(value.typeId);
    const std::string number = integerText(value, format);
    for (asUINT i = 0; type != nullptr && i < type->GetEnumValueCount(); ++i) {
        int known = 0;
        const char* const name = type->GetEnumValueByIndex(i, &known);
        if (name != nullptr && known == integerOf(value))
            return std::string(name) + " (" + number + ")";
    }
    return number;
}

/// Its sign says nothing, and is another one on another processor.
bool isNaN(const ValueView& value) {
    return std::isnan(realOf(value));
}

std::string functionText(asIScriptFunction& function) {
    asIScriptFunction* const bound = function.GetDelegateFunction();
    asIScriptFunction& shown = bound != nullptr ? *bound : function;
    return declarationOf(shown);
}

/// Writes objects and arrays with what they hold, until the text is long enough.
class Writer {
  public:
    Writer(asIScriptEngine& engine, const StoppedScript& script, const ValueFormat& format)
        : engine_(engine),
          script_(script),
          format_(format),
          whole_(format.longest == ValueFormat::whole().longest),
          most_(whole_ ? kWhole : std::min(kPreview, format.longest)) {}

    std::string take() { return std::move(text_); }

    void write(const ValueView& value, int depth) {
        if (value.kind == ValueKind::array)
            writeArray(value, depth);
        else if (value.kind == ValueKind::object)
            writeObject(value, depth);
        else
            text_ += plain(value);
    }

  private:
    std::string plain(const ValueView& value) {
        switch (value.kind) {
            case ValueKind::uninitialised:
                return kNull;
            case ValueKind::boolean:
                return boolOf(value) ? "true" : "false";
            case ValueKind::signedInteger:
            case ValueKind::unsignedInteger:
                return integerText(value, format_);
            case ValueKind::enumeration:
                return enumText(engine_, value, format_);
            case ValueKind::singleReal:
                return isNaN(value) ? "nan" : formatShortest(static_cast<float>(realOf(value)));
            case ValueKind::doubleReal:
                return isNaN(value) ? "nan" : formatShortest(realOf(value));
            case ValueKind::string:
                return quotedText(textOf(value), format_.longest);
            default:
                return other(value);
        }
    }

    std::string other(const ValueView& value) {
        if (asIScriptFunction* const function = functionOf(engine_, value))
            return functionText(*function);
        const asITypeInfo* const type = engine_.GetTypeInfoById(value.typeId);
        if (const TypeView* const view = typeViewOf(type))
            return view->text(value.address, format_.longest);
        return type != nullptr ? "{" + std::string(type->GetName()) + "}" : "?";
    }

    bool full() const { return text_.size() >= most_; }

    void writeArray(const ValueView& array, int depth) {
        text_ += '{';
        for (std::uint32_t i = 0; i < array.elements; ++i) {
            if (i > 0) text_ += ", ";
            if (full() || depth >= kDeepest) {
                text_ += kMore;
                break;
            }
            write(script_.element(array, i), depth + 1);
        }
        text_ += '}';
    }

    /// Objects may hold each other in a ring: a shortened text names those inside others only.
    void writeObject(const ValueView& object, int depth) {
        const asITypeInfo* const type = engine_.GetTypeInfoById(object.typeId);
        if (type != nullptr) text_ += type->GetName();
        if (depth >= (whole_ ? kDeepest : 1)) return;
        text_ += " {";
        for (std::uint32_t i = 0; i < object.elements; ++i) {
            if (i > 0) text_ += ", ";
            if (full()) {
                text_ += kMore;
                break;
            }
            std::string name;
            const ValueView member = script_.member(object, i, name);
            text_ += name + " = ";
            write(member, depth + 1);
        }
        text_ += '}';
    }

    asIScriptEngine& engine_;
    const StoppedScript& script_;
    const ValueFormat& format_;
    bool whole_;
    std::size_t most_;
    std::string text_;
};

}  // namespace

std::string quotedText(std::string_view bytes, std::size_t longest) {
    std::string text = "\"";
    while (!bytes.empty() && text.size() <= longest) {
        const int length = utf8SequenceLength(bytes);
        if (length == 1)
            appendEscaped(text, bytes.front());
        else if (length > 1)
            text += bytes.substr(0, static_cast<std::size_t>(length));
        else
            text += hexByte(static_cast<unsigned char>(bytes.front()));
        bytes.remove_prefix(static_cast<std::size_t>(std::max(length, 1)));
    }
    text += '"';
    return bytes.empty() ? text : text + kMore;
}

asIScriptFunction* functionOf(asIScriptEngine& engine, const ValueView& value) {
    if (value.kind != ValueKind::other || value.address == nullptr) return nullptr;
    const asITypeInfo* const type = engine.GetTypeInfoById(value.typeId);
    if (type == nullptr || (type->GetFlags() & asOBJ_FUNCDEF) == 0) return nullptr;
    return static_cast<asIScriptFunction*>(const_cast<void*>(value.address));
}

std::string typeText(asIScriptEngine& engine, int declared, const ValueView& value) {
    if (declared == asTYPEID_VOID) return kNull;
    int typeId = declared;
    if (value.kind == ValueKind::object)
        typeId = value.typeId | (declared & (asTYPEID_OBJHANDLE | asTYPEID_HANDLETOCONST));
    const char* const text = engine.GetTypeDeclaration(typeId, true);
    return text != nullptr ? text : "";
}

std::string valueText(asIScriptEngine& engine, const StoppedScript& script, const ValueView& value,
                      const ValueFormat& format) {
    Writer writer(engine, script, format);
    writer.write(value, 0);
    return writer.take();
}

}  // namespace korvant
