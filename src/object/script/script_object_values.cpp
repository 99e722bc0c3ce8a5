// Reading and writing values, and walking through an object.
#include "object/script/object_access.h"

using korvant::ObjectModel;
using korvant::orRaise;
using korvant::PropertyRecord;
using korvant::putReal;
using korvant::realAt;
using korvant::saturated;

namespace {

static_assert(sizeof(std::int32_t) == 4, "a script's int has 32 bits");

/// The slot is read whatever the property's type letter is.
template <class Read>
bool readSlot(const ObjectModel& model, const std::string& name, Read read) {
    return orRaise(false, [&] {
        const std::int32_t index = model.find(name);
        if (index == ObjectModel::kUnknown) return false;
        read(model.properties[static_cast<std::size_t>(index)]);
        return true;
    });
}

template <class Write>
bool writeSlot(ObjectModel& model, const std::string& name, Write write) {
    return orRaise(false, [&] {
        const std::int32_t index = model.find(name);
        if (index == ObjectModel::kUnknown) return false;
        write(model.properties[static_cast<std::size_t>(index)]);
        return true;
    });
}

}  // namespace

int ScriptObject::getPropertiesCount() {
    return impl_->model.count();
}

std::string ScriptObject::getPropertyName(int index) {
    std::int32_t place = index;
    std::string name;
    _getPropertyName(place, name);
    return name;
}

void ScriptObject::_getPropertyName(std::int32_t& index, std::string& name) {
    orRaise([&] {
        if (impl_->model.holds(index))
            name = impl_->model.properties[static_cast<std::size_t>(index)].name;
        else
            name.clear();
    });
}

int ScriptObject::getPropertyType(int index) {
    std::int32_t place = index;
    return _getPropertyType(place);
}

std::int32_t ScriptObject::_getPropertyType(std::int32_t& index) {
    if (!impl_->model.holds(index)) return korvant::property_type::kNone;
    const PropertyRecord& property = impl_->model.properties[static_cast<std::size_t>(index)];
    return korvant::property_type::ofLetter(property.letter);
}

int ScriptObject::getPropertyTypeByName(std::string name) {
    return _getPropertyTypeByName(name);
}

std::int32_t ScriptObject::_getPropertyTypeByName(std::string& name) {
    std::int32_t index = impl_->model.find(name);
    return _getPropertyType(index);
}

bool ScriptObject::getProperty(std::string name, bool* value) {
    return value != nullptr && _getBoolProperty(name, *value);
}

bool ScriptObject::getProperty(std::string name, float* value) {
    return value != nullptr && _getFloatProperty(name, *value);
}

bool ScriptObject::getProperty(std::string name, double* value) {
    return value != nullptr && _getDoubleProperty(name, *value);
}

bool ScriptObject::getProperty(std::string name, int* value) {
    std::int32_t number = 0;
    if (value == nullptr || !_getIntProperty(name, number)) return false;
    *value = number;
    return true;
}

bool ScriptObject::getProperty(std::string name, long* value) {
    std::int32_t number = 0;
    if (value == nullptr || !_getLongProperty(name, number)) return false;
    *value = number;
    return true;
}

bool ScriptObject::getProperty(std::string name, std::string* value) {
    return value != nullptr && _getStringProperty(name, *value);
}

bool ScriptObject::setProperty(std::string name, bool value) {
    return _setBoolProperty(name, value);
}

bool ScriptObject::setProperty(std::string name, float value) {
    return _setFloatProperty(name, value);
}

bool ScriptObject::setProperty(std::string name, double value) {
    return _setDoubleProperty(name, value);
}

bool ScriptObject::setProperty(std::string name, int value) {
    std::int32_t number = value;
    return _setIntProperty(name, number);
}

bool ScriptObject::setProperty(std::string name, long value) {
    std::int32_t number = saturated(value);
    return _setLongProperty(name, number);
}

bool ScriptObject::setProperty(std::string name, std::string value) {
    return _setStringProperty(name, value);
}

bool ScriptObject::_getStringProperty(std::string& name, std::string& value) {
    return readSlot(impl_->model, name,
                    [&](const PropertyRecord& p) { value = impl_->model.textOf(p); });
}

bool ScriptObject::_getIntProperty(std::string& name, std::int32_t& value) {
    return readSlot(impl_->model, name, [&](const PropertyRecord& p) { value = p.integer; });
}

bool ScriptObject::_getLongProperty(std::string& name, std::int32_t& value) {
    return _getIntProperty(name, value);
}

bool ScriptObject::_getDoubleProperty(std::string& name, double& value) {
    return readSlot(impl_->model, name, [&](const PropertyRecord& p) { putReal(&value, p.real); });
}

bool ScriptObject::_getFloatProperty(std::string& name, float& value) {
    return readSlot(impl_->model, name,
                    [&](const PropertyRecord& p) { value = static_cast<float>(p.real); });
}

bool ScriptObject::_getBoolProperty(std::string& name, bool& value) {
    return readSlot(impl_->model, name, [&](const PropertyRecord& p) { value = p.boolean; });
}

bool ScriptObject::_setStringProperty(std::string& name, const std::string& value) {
    ObjectModel& model = impl_->model;
    return writeSlot(model, name, [&](PropertyRecord& p) { model.setText(p, value); });
}

bool ScriptObject::_setIntProperty(std::string& name, std::int32_t& value) {
    return writeSlot(impl_->model, name, [&](PropertyRecord& p) { p.integer = value; });
}

bool ScriptObject::_setLongProperty(std::string& name, std::int32_t& value) {
    return _setIntProperty(name, value);
}

bool ScriptObject::_setDoubleProperty(std::string& name, double& value) {
    return writeSlot(impl_->model, name, [&](PropertyRecord& p) { p.real = realAt(&value); });
}

bool ScriptObject::_setFloatProperty(std::string& name, float& value) {
    return writeSlot(impl_->model, name,
                     [&](PropertyRecord& p) { p.real = static_cast<double>(value); });
}

bool ScriptObject::_setBoolProperty(std::string& name, bool& value) {
    return writeSlot(impl_->model, name, [&](PropertyRecord& p) { p.boolean = value; });
}

void ScriptObject::resetIterators() {
    _resetIterators();
}

void ScriptObject::_resetIterators() {
    impl_->model.resetWalk();
}

bool ScriptObject::getNextClass(std::string* name, bool* value) {
    return name != nullptr && value != nullptr && _getNextClass(*name, *value);
}

bool ScriptObject::_getNextClass(std::string& name, bool& value) {
    return orRaise(false, [&] { return impl_->model.nextClass(name, value); });
}

bool ScriptObject::getNextCategory(std::string* name) {
    return name != nullptr && _getNextCategory(*name);
}

bool ScriptObject::_getNextCategory(std::string& name) {
    return orRaise(false, [&] { return impl_->model.nextCategory(name); });
}

bool ScriptObject::getNextProperty(std::string* name, int* index) {
    std::int32_t place = 0;
    if (name == nullptr || index == nullptr || !_getNextProperty(*name, place)) return false;
    *index = place;
    return true;
}

bool ScriptObject::_getNextProperty(std::string& name, std::int32_t& index) {
    return orRaise(false, [&] { return impl_->model.nextProperty(name, index); });
}
