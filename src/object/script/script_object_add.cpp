// Declaring properties, categories and classes.
#include "object/script/object_access.h"

using korvant::orRaise;
using korvant::PropertyRecord;
using korvant::realAt;
using korvant::saturated;

namespace {

std::string_view orEmpty(const char* text) {
    return text == nullptr ? "" : text;
}

}  // namespace

long ScriptObject::createProperty(std::string& name, std::string label, bool& flag) {
    return orRaise(-1L, [&] {
        PropertyRecord made;
        made.name = name;
        made.flag = flag;
        return impl_->model.insert(std::move(made), label) ? impl_->model.count() - 1L : -1L;
    });
}

bool ScriptObject::addProperty(std::string name, std::string label, bool value, bool flag,
                               long radioGroup) {
    std::int32_t group = saturated(radioGroup);
    return _addBoolRadioProperty(name, label, value, flag, group);
}

bool ScriptObject::addProperty(std::string name, std::string label, float value, std::string unit,
                               bool flag) {
    return orRaise(false, [&] {
        return impl_->model.addReal(name, label, static_cast<double>(value), unit, flag);
    });
}

bool ScriptObject::addProperty(std::string name, std::string label, double value, std::string unit,
                               bool flag) {
    return orRaise(false, [&] { return impl_->model.addReal(name, label, value, unit, flag); });
}

bool ScriptObject::addProperty(std::string name, std::string label, int value, std::string unit,
                               bool flag) {
    std::int32_t number = value;
    return _addIntProperty(name, label, number, unit, flag);
}

bool ScriptObject::addProperty(std::string name, std::string label, long value, std::string unit,
                               bool flag) {
    std::int32_t number = saturated(value);
    return _addLongProperty(name, label, number, unit, flag);
}

bool ScriptObject::addProperty(std::string name, std::string label, const char* value,
                               const char* filter, bool fileFlag, bool flag) {
    return orRaise(false, [&] {
        const char letter = fileFlag ? 'F' : 'f';
        return impl_->model.addText(name, label, orEmpty(value), flag, letter, orEmpty(filter));
    });
}

bool ScriptObject::addProperty(std::string name, std::string label, const char* value, bool flag,
                               bool alternate) {
    return orRaise(false, [&] {
        const char letter = alternate ? 'e' : 's';
        return impl_->model.addText(name, label, orEmpty(value), flag, letter);
    });
}

void ScriptObject::addOption(std::string option) {
    _addOption(option);
}

bool ScriptObject::addOptionProperty(std::string name, std::string label, int value, bool flag) {
    std::int32_t number = value;
    return _addIntOptionProperty(name, label, number, flag);
}

bool ScriptObject::addOptionProperty(std::string name, std::string label, long value, bool flag) {
    std::int32_t number = saturated(value);
    return _addLongOptionProperty(name, label, number, flag);
}

bool ScriptObject::_addStringProperty(std::string& name, std::string& label, std::string& value,
                                      bool& flag) {
    return orRaise(false, [&] { return impl_->model.addText(name, label, value, flag, 's'); });
}

bool ScriptObject::_addStringFileProperty(std::string& name, std::string& label, std::string& value,
                                          std::string& filter, bool& fileFlag, bool& flag) {
    return orRaise(false, [&] {
        return impl_->model.addText(name, label, value, flag, fileFlag ? 'F' : 'f', filter);
    });
}

bool ScriptObject::_addIntProperty(std::string& name, std::string& label, std::int32_t& value,
                                   std::string& unit, bool& flag) {
    return orRaise(false, [&] { return impl_->model.addInteger(name, label, value, unit, flag); });
}

bool ScriptObject::_addLongProperty(std::string& name, std::string& label, std::int32_t& value,
                                    std::string& unit, bool& flag) {
    return _addIntProperty(name, label, value, unit, flag);
}

bool ScriptObject::_addIntOptionProperty(std::string& name, std::string& label, std::int32_t& value,
                                         bool& flag) {
    return orRaise(false, [&] { return impl_->model.addOptions(name, label, value, flag); });
}

bool ScriptObject::_addLongOptionProperty(std::string& name, std::string& label,
                                          std::int32_t& value, bool& flag) {
    return _addIntOptionProperty(name, label, value, flag);
}

bool ScriptObject::_addDoubleProperty(std::string& name, std::string& label, double& value,
                                      std::string& unit, bool& flag) {
    const double real = realAt(&value);
    return orRaise(false, [&] { return impl_->model.addReal(name, label, real, unit, flag); });
}

bool ScriptObject::_addFloatProperty(std::string& name, std::string& label, float& value,
                                     std::string& unit, bool& flag) {
    double wide = value;
    return _addDoubleProperty(name, label, wide, unit, flag);
}

bool ScriptObject::_addBoolProperty(std::string& name, std::string& label, bool& value,
                                    bool& flag) {
    std::int32_t none = -1;
    return _addBoolRadioProperty(name, label, value, flag, none);
}

bool ScriptObject::_addBoolRadioProperty(std::string& name, std::string& label, bool& value,
                                         bool& flag, std::int32_t& radioGroup) {
    return orRaise(false,
                   [&] { return impl_->model.addBoolean(name, label, value, flag, radioGroup); });
}

void ScriptObject::_addOption(std::string& option) {
    orRaise([&] { impl_->model.addOption(option); });
}

void ScriptObject::addCategory(std::string name) {
    _addCategory(name);
}

void ScriptObject::_addCategory(std::string& name) {
    orRaise([&] { impl_->model.addCategory(name); });
}

void ScriptObject::addClass(std::string name, bool value) {
    _addClass(name, value);
}

void ScriptObject::_addClass(std::string& name, bool& value) {
    orRaise([&] { impl_->model.addClass(name, value); });
}
