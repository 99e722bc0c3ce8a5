// Rules and translations of an object.
#include "object/model/object_model.h"

namespace korvant {

const PropertyRules& ObjectModel::rulesOf(const PropertyRecord& property) const noexcept {
    static const PropertyRules kNone;
    return property.rules < 0 ? kNone : rules[static_cast<std::size_t>(property.rules)];
}

PropertyRules& ObjectModel::rulesFor(std::int32_t index) {
    PropertyRecord& property = properties[static_cast<std::size_t>(index)];
    if (property.rules < 0) {
        charged.add(sizeof(PropertyRules));
        rules.emplace_back();
        property.rules = static_cast<std::int32_t>(rules.size() - 1);
    }
    return rules[static_cast<std::size_t>(property.rules)];
}

void ObjectModel::addCondition(std::string_view name, ConstraintList PropertyRules::*list,
                               std::string_view expression, std::string_view message) {
    const std::int32_t index = find(name);
    if (index == kUnknown) return;
    ConstraintList& constraints = rulesFor(index).*list;
    if (constraints.holds(expression)) return;
    charged.add(sizeof(Constraint) + expression.size() + message.size());
    constraints.add(expression, message);
}

void ObjectModel::addError(std::string_view name, std::string_view expression,
                           std::string_view message) {
    addCondition(name, &PropertyRules::errors, expression, message);
}

void ObjectModel::addWarning(std::string_view name, std::string_view expression,
                             std::string_view message) {
    addCondition(name, &PropertyRules::warnings, expression, message);
}

void ObjectModel::addEnable(std::string_view name, std::string_view expression) {
    addCondition(name, &PropertyRules::enables, expression, {});
}

void ObjectModel::setComputation(std::string_view name, std::string_view expression) {
    const std::int32_t index = find(name);
    if (index == kUnknown) return;
    std::string text(expression);
    charged.add(text.size());
    rulesFor(index).computation = std::move(text);
}

void ObjectModel::addHint(std::string_view name, std::string_view text) {
    if (properties.empty()) return;
    std::string hint(text);
    std::int32_t index = find(name);
    charged.add(name.size() + hint.size());
    if (index == kUnknown) {
        index = 0;
        names_.reserve(names_.size() + 1);
        aliases_.emplace_back(name);
        names_.insert(name, kAlias | static_cast<std::uint32_t>(aliases_.size() - 1));
    }
    rulesFor(index).hint = std::move(hint);
}

void ObjectModel::addTranslation(std::int32_t locale, std::string_view source,
                                 std::string_view text) {
    if (locale <= 0 || locale > kHighestLocale) return;
    const auto position = static_cast<std::size_t>(locale - 1);
    if (dictionaries.size() <= position) dictionaries.resize(position + 1);
    charged.add(sizeof(Dictionary::value_type) + source.size() + text.size());
    dictionaries[position].insert_or_assign(std::string(source), std::string(text));
}

const std::string& ObjectModel::translate(const std::string& source, std::int32_t locale) const {
    const std::int64_t position = std::int64_t{locale} - 1;
    if (position < 0 || position >= static_cast<std::int64_t>(dictionaries.size())) return source;
    const Dictionary& dictionary = dictionaries[static_cast<std::size_t>(position)];
    const auto found = dictionary.find(source);
    return found == dictionary.end() ? source : found->second;
}

}  // namespace korvant
