// Groups of repeated elements, and merging one object into another.
#include "object/script/object_access.h"

using korvant::GroupFlags;
using korvant::GroupRecord;
using korvant::ObjectAccess;
using korvant::ObjectModel;
using korvant::orRaise;

namespace {

/// Leaves the cursors of an object that was merged where a complete walk leaves them.
void walkToTheEnd(ObjectModel& model) {
    std::string name;
    bool value = false;
    std::int32_t index = 0;
    model.resetWalk();
    while (model.nextClass(name, value))
        while (model.nextCategory(name))
            while (model.nextProperty(name, index)) continue;
}

void addForeignProperty(ObjectModel& model, KorStamp& other, const std::string& name, int index) {
    std::string text;
    double real = 0.0;
    int integer = 0;
    bool boolean = false;
    switch (other.getPropertyType(index)) {
        case korvant::property_type::kInteger:
            other.getProperty(name, &integer);
            model.addInteger(name, name, integer, {}, true);
            break;
        case korvant::property_type::kReal:
            other.getProperty(name, &real);
            model.addReal(name, name, real, {}, true);
            break;
        case korvant::property_type::kBoolean:
            other.getProperty(name, &boolean);
            model.addBoolean(name, name, boolean, true, -1);
            break;
        case korvant::property_type::kText:
            other.getProperty(name, &text);
            model.addText(name, name, text, true, 's');
            break;
        default:
            break;
    }
}

/// At most as many properties as the object says it has, so that the walk ends.
void addForeignProperties(ObjectModel& model, KorStamp& other, int& left) {
    std::string name;
    for (int index = 0; left > 0 && other.getNextProperty(&name, &index); --left)
        addForeignProperty(model, other, name, index);
}

void addForeignCategories(ObjectModel& model, KorStamp& other, int& left) {
    std::string name;
    while (other.getNextCategory(&name)) {
        model.addCategory(name);
        addForeignProperties(model, other, left);
    }
    addForeignProperties(model, other, left);
}

/// What the interface tells of an object of somebody else's making: it has no labels and units.
ObjectModel modelOf(KorStamp& other) {
    ObjectModel model;
    std::string name;
    int left = other.getPropertiesCount();
    other.resetIterators();
    bool classless = true;
    for (; other.getNextClass(&name); classless = false) {
        model.addClass(name, true);
        addForeignCategories(model, other, left);
    }
    if (classless) addForeignCategories(model, other, left);
    return model;
}

}  // namespace

bool ScriptObject::append(KorStamp& other) {
    if (&other == this) return true;
    return orRaise(false, [&] {
        auto* object = ObjectAccess::from(other);
        impl_->model.append(object != nullptr ? object->impl_->model : modelOf(other));
        if (object != nullptr) walkToTheEnd(object->impl_->model);
        return true;
    });
}

long ScriptObject::createCompositProperties(ScriptObject& other) {
    if (impl_->model.classes.empty()) return -1;
    append(other);
    return 0;
}

void ScriptObject::addGroup(std::string name, ScriptObject& templ, bool add, bool copy, bool remove,
                            bool order) {
    _addGroup(name, templ, add, copy, remove, order);
}

void ScriptObject::_addGroup(std::string& name, ScriptObject& templ, bool& add, bool& copy,
                             bool& remove, bool& order) {
    orRaise([&] {
        const auto layout = std::make_shared<const ObjectModel>(templ.impl_->model);
        impl_->model.addGroup(name, layout, {add, copy, remove, order});
        if (&templ != this) walkToTheEnd(templ.impl_->model);
    });
}

void ScriptObject::addGroupElement(ScriptObject& element) {
    orRaise([&] { impl_->model.addElement(element.impl_->model); });
}

bool ScriptObject::getGroup(std::string name, std::int32_t index, ScriptObject* element) {
    return element != nullptr && _getGroup(name, index, *element);
}

bool ScriptObject::_getGroup(std::string& name, std::int32_t& index, ScriptObject& element) {
    const GroupRecord* group = impl_->model.findGroup(name);
    if (group == nullptr || !group->hasElements || index < 0) return false;
    if (static_cast<std::size_t>(index) >= group->elements.size()) return false;
    return orRaise(false, [&] {
        ObjectAccess::assign(element, *group->elements[static_cast<std::size_t>(index)]);
        return true;
    });
}

std::int32_t ScriptObject::getGroupSize(std::string name) {
    return _getGroupSize(name);
}

std::int32_t ScriptObject::_getGroupSize(std::string& name) {
    const GroupRecord* group = impl_->model.findGroup(name);
    return group == nullptr ? 0 : static_cast<std::int32_t>(group->elements.size());
}

std::int32_t ScriptObject::getGroupElement(std::string name) {
    return _getGroupElement(name);
}

std::int32_t ScriptObject::_getGroupElement(std::string& name) {
    const GroupRecord* group = impl_->model.findGroup(name);
    return group == nullptr ? 0 : group->current;
}

void ScriptObject::setGroupElement(std::string name, std::int32_t index) {
    _setGroupElement(name, index);
}

void ScriptObject::_setGroupElement(std::string& name, std::int32_t& index) {
    orRaise([&] { impl_->model.setCurrentElement(name, index); });
}
