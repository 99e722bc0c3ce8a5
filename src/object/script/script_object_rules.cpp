// Rules, hints and translations of a property object.
#include "object/form/form_texts.h"
#include "object/script/object_access.h"

using korvant::orRaise;
using korvant::saturated;

void ScriptObject::addErrorConstraint(std::string name, std::string expression,
                                      std::string message) {
    _addErrorConstraint(name, expression, message);
}

void ScriptObject::_addErrorConstraint(std::string& name, std::string& expression,
                                       std::string& message) {
    orRaise([&] { impl_->model.addError(name, expression, message); });
}

void ScriptObject::addWarningConstraint(std::string name, std::string expression,
                                        std::string message) {
    _addWarningConstraint(name, expression, message);
}

void ScriptObject::_addWarningConstraint(std::string& name, std::string& expression,
                                         std::string& message) {
    orRaise([&] { impl_->model.addWarning(name, expression, message); });
}

void ScriptObject::addEnableConstraint(std::string name, std::string expression) {
    _addEnableConstraint(name, expression);
}

void ScriptObject::_addEnableConstraint(std::string& name, std::string& expression) {
    orRaise([&] { impl_->model.addEnable(name, expression); });
}

void ScriptObject::addHint(std::string name, std::string text) {
    _addHint(name, text);
}

void ScriptObject::_addHint(std::string& name, std::string& text) {
    orRaise([&] { impl_->model.addHint(name, text); });
}

void ScriptObject::addComputation(std::string name, std::string expression) {
    _addComputation(name, expression);
}

void ScriptObject::_addComputation(std::string& name, std::string& expression) {
    orRaise([&] { impl_->model.setComputation(name, expression); });
}

void ScriptObject::setLocale(std::int32_t locale) {
    m_locale = locale;
}

void ScriptObject::_setLocale(std::int32_t& locale) {
    m_locale = locale;
}

std::int32_t ScriptObject::getLocale() {
    return m_locale;
}

std::int32_t ScriptObject::_getLocale() {
    return m_locale;
}

void ScriptObject::addTranslation(long locale, std::string source, std::string text) {
    std::int32_t code = saturated(locale);
    _addTranslation(code, source, text);
}

void ScriptObject::_addTranslation(std::int32_t& locale, std::string& source, std::string& text) {
    orRaise([&] { impl_->model.addTranslation(locale, source, text); });
}

std::string ScriptObject::translate(const std::string& text) {
    return orRaise(std::string(), [&] { return impl_->model.translate(text, m_locale); });
}

std::vector<std::string> ScriptObject::translate(const std::vector<std::string>& texts) {
    return orRaise(std::vector<std::string>(), [&] {
        std::vector<std::string> translated = texts;
        for (std::string& text : translated) text = impl_->model.translate(text, m_locale);
        return translated;
    });
}

std::map<long, std::string> ScriptObject::translate(const std::map<long, std::string>& texts) {
    return orRaise(std::map<long, std::string>(), [&] {
        std::map<long, std::string> translated = texts;
        for (auto& [key, text] : translated) text = impl_->model.translate(text, m_locale);
        return translated;
    });
}

std::map<long, std::vector<std::string>> ScriptObject::translate(
    const std::map<long, std::vector<std::string>>& texts) {
    return orRaise(std::map<long, std::vector<std::string>>(), [&] {
        std::map<long, std::vector<std::string>> translated;
        for (const auto& [key, list] : texts) translated.emplace(key, translate(list));
        return translated;
    });
}

void ScriptObject::translate(std::map<unsigned long, const char*>* captions) {
    if (captions == nullptr) return;
    orRaise([&] { korvant::addButtonCaptions(*captions, m_locale); });
}
