#include "object/script/object_view.h"

#include <limits>

#include "base/text/number_text.h"
#include "base/text/text_encoding.h"
#include "object/form/rule_book.h"
#include "object/form/working_copy.h"
#include "object/script/object_access.h"

namespace korvant {

namespace {

constexpr char kWrongKind[] = "This value does not fit the property.";

std::string typeOf(const PropertyRecord& property) {
    switch (property_type::ofLetter(property.letter)) {
        case property_type::kInteger:
            return "int";
        case property_type::kReal:
            return "double";
        case property_type::kBoolean:
            return "bool";
        case property_type::kText:
            return "string";
        default:
            return "";
    }
}

std::string optionOf(const ObjectModel& model, const PropertyRecord& property) {
    if (property.options < 0) return {};
    const auto& options = model.optionLists[static_cast<std::size_t>(property.options)];
    const auto chosen = static_cast<std::size_t>(property.integer);
    return property.integer >= 0 && chosen < options.size()
               ? " " + decodeForDisplay(options[chosen])
               : std::string();
}

std::string valueOf(const ObjectModel& model, const PropertyRecord& property) {
    switch (property_type::ofLetter(property.letter)) {
        case property_type::kInteger:
            return std::to_string(property.integer) + optionOf(model, property);
        case property_type::kReal:
            return formatShortest(property.real);
        case property_type::kBoolean:
            return property.boolean ? "true" : "false";
        case property_type::kText:
            return "\"" + decodeForDisplay(model.textOf(property)) + "\"";
        default:
            return "?";
    }
}

/// What the rules of the property say of its value.
std::string verdictOf(const ObjectModel& model, std::int32_t index) {
    const PropertyRecord& property = model.properties[static_cast<std::size_t>(index)];
    if (property.rules < 0) return {};
    WorkingCopy values(model);
    RuleBook book(model, values, ScriptObject::m_locale);
    book.check();
    std::string verdict;
    for (const bool errors : {true, false})
        for (const std::string& message : book.failing(index, errors))
            verdict += (errors ? ", error: " : ", warning: ") + decodeForDisplay(message);
    if (!book.enabled(index)) verdict += ", disabled";
    return verdict;
}

/// The class whose properties the one at `index` is among.
std::string classOf(const ObjectModel& model, std::int32_t index) {
    std::string name;
    for (const ClassRecord& one : model.classes)
        if (index >= one.first && index <= one.last) name = one.name;
    return decodeForDisplay(name);
}

class ObjectView final : public TypeView {
    std::string text(const void* object, std::size_t) const override {
        const ObjectModel& model = modelOf(object);
        if (const std::string& title = model.title.text(); !title.empty())
            return "\"" + decodeForDisplay(title) + "\"";
        const auto count = model.properties.size();
        return "Object {" + std::to_string(count) + (count == 1 ? " property}" : " properties}");
    }

    std::uint64_t count(const void* object) const override {
        return modelOf(object).properties.size();
    }

    ViewedPart part(const void* object, std::uint64_t place) const override {
        const ObjectModel& model = modelOf(object);
        if (place >= model.properties.size()) return {};
        const auto index = static_cast<std::int32_t>(place);
        const PropertyRecord& property = model.properties[place];
        ViewedPart part;
        part.name = decodeForDisplay(property.name);
        part.group = classOf(model, index);
        part.type = typeOf(property);
        part.value = valueOf(model, property);
        if (property_type::ofLetter(property.letter) != property_type::kText)
            if (const std::string_view unit = model.labels.unit(place); !unit.empty())
                part.value += " " + decodeForDisplay(unit);
        part.value += verdictOf(model, index);
        part.settable = !part.type.empty();
        return part;
    }

    std::string set(void* object, std::uint64_t place, const ViewedScalar& value) const override {
        auto& target = *static_cast<ScriptObject*>(object);
        const ObjectModel& model = ObjectAccess::model(target);
        if (place >= model.properties.size()) return "This property is gone.";
        const std::string name = model.properties[place].name;
        const bool isNumber = value.kind != ViewedScalar::Kind::text;
        const double number = value.kind == ViewedScalar::Kind::real
                                  ? value.real
                                  : static_cast<double>(value.integer);
        bool done = false;
        switch (property_type::ofLetter(model.properties[place].letter)) {
            case property_type::kInteger:
                if (value.kind != ViewedScalar::Kind::integer || !fits(value.integer))
                    return kWrongKind;
                done = target.setProperty(name, static_cast<int>(value.integer));
                break;
            case property_type::kReal:
                if (!isNumber) return kWrongKind;
                done = target.setProperty(name, number);
                break;
            case property_type::kBoolean:
                if (value.kind != ViewedScalar::Kind::boolean) return kWrongKind;
                done = target.setProperty(name, value.integer != 0);
                break;
            case property_type::kText:
                if (isNumber) return kWrongKind;
                done = target.setProperty(name, value.text);
                break;
            default:
                return kWrongKind;
        }
        return done ? "" : "The property refused this value.";
    }

    static const ObjectModel& modelOf(const void* object) {
        return ObjectAccess::model(*static_cast<const ScriptObject*>(object));
    }

    static bool fits(std::int64_t value) {
        using Range = std::numeric_limits<std::int32_t>;
        return value >= Range::min() && value <= Range::max();
    }
};

}  // namespace

const TypeView& objectView() {
    static const ObjectView view;
    return view;
}

}  // namespace korvant
