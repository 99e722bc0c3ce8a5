#include "object/model/object_title.h"

#include <new>

#include "host/engine/script_string.h"

namespace korvant {

ObjectTitle::ObjectTitle(const ObjectTitle& other) {
    if (other.string_ != nullptr) set(other.text());
}

ObjectTitle& ObjectTitle::operator=(const ObjectTitle& other) {
    if (this != &other) set(other.text());
    return *this;
}

ObjectTitle& ObjectTitle::operator=(ObjectTitle&& other) noexcept {
    if (string_ == nullptr || other.string_ == nullptr) {
        if (string_ != nullptr) string_->text.clear();
        if (string_ == nullptr) std::swap(string_, other.string_);
    } else {
        string_->text.swap(other.string_->text);
    }
    return *this;
}

ObjectTitle::~ObjectTitle() {
    if (string_ != nullptr) string_->release();
}

const std::string& ObjectTitle::text() const noexcept {
    static const std::string kEmpty;
    return string_ == nullptr ? kEmpty : string_->text;
}

void ObjectTitle::set(std::string text) {
    if (string_ == nullptr && text.empty()) return;
    if (!string()->adopt(std::move(text))) throw std::bad_alloc();
}

void ObjectTitle::clear() noexcept {
    if (string_ != nullptr) string_->text.clear();
}

ScriptString* ObjectTitle::string() {
    if (string_ == nullptr) string_ = ScriptString::create();
    if (string_ == nullptr) throw std::bad_alloc();
    return string_;
}

std::string* ObjectTitle::own() {
    return &string()->text;
}

}  // namespace korvant
