// The title of an object, which scripts can hold by handle.
#pragma once

#include <string>
#include <utility>

namespace korvant {

class ScriptString;

/// A text in a counted script string, so that a handle to it outlives the object. Copying copies
/// the text; assigning writes the text into the string that is there.
class ObjectTitle {
  public:
    ObjectTitle() = default;
    ObjectTitle(const ObjectTitle& other);
    ObjectTitle(ObjectTitle&& other) noexcept : string_(std::exchange(other.string_, nullptr)) {}
    ObjectTitle& operator=(const ObjectTitle& other);
    /// Takes the text of `other` into the string that is there.
    ObjectTitle& operator=(ObjectTitle&& other) noexcept;
    ~ObjectTitle();

    const std::string& text() const noexcept;
    void set(std::string text);
    void clear() noexcept;
    /// The string itself, made when there is none; no reference is added. Throws std::bad_alloc.
    ScriptString* string();
    /// The text inside string().
    std::string* own();

  private:
    ScriptString* string_ = nullptr;
};

}  // namespace korvant
