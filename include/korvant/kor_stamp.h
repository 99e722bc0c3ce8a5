// The property object as the host family sees it.
#ifndef KORVANT_KOR_STAMP_H
#define KORVANT_KOR_STAMP_H

#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include "korvant/kor_stamp_listener.h"
#include "korvant/korvant_kernel_framework.h"

namespace korvant {

template <typename T>
using EnableIfReal =
    std::enable_if_t<std::is_same<T, float>::value || std::is_same<T, double>::value, int>;
/// Integers that the operations have no form of their own for.
template <typename T>
using EnableIfOtherInteger =
    std::enable_if_t<std::is_integral<T>::value && !std::is_same<T, bool>::value &&
                         !std::is_same<T, int>::value && !std::is_same<T, long>::value,
                     int>;
template <typename T>
using EnableIfInteger =
    std::enable_if_t<std::is_integral<T>::value && !std::is_same<T, bool>::value, int>;

/// What an integer is handed on as: itself, or the nearest long.
constexpr int passedInteger(int value) noexcept {
    return value;
}
constexpr long passedInteger(long value) noexcept {
    return value;
}
template <typename Integer>
constexpr long passedInteger(Integer value) noexcept {
    using Range = std::numeric_limits<long>;
    if constexpr (std::is_signed<Integer>::value) {
        const long long wide = value;
        if (wide < (Range::min)()) return (Range::min)();
        return wide > (Range::max)() ? (Range::max)() : static_cast<long>(wide);
    } else {
        const unsigned long long wide = value;
        constexpr unsigned long long most = (Range::max)();
        return static_cast<long>(wide > most ? most : wide);
    }
}

}  // namespace korvant

/// A named, ordered set of typed properties. The order of the operations is the order of the
/// table of virtual functions; both sides of a library border rely on it.
///
/// Texts are bytes. A null `const char*` is an empty text, a null result pointer makes the
/// operation answer false. An add operation answers false, and changes nothing, when a property of
/// that name exists; get and set answer false for a name that does not.
class KorStamp : public KorvantKernelFramework {
  public:
    ~KorStamp() override = default;

    /// Removes everything but listeners and iteration cursors.
    virtual void clear() = 0;

    /// `flag`: the property may be edited. `radioGroup`: of the booleans that share a number of 0
    /// or above the user can set one; -1 for none.
    virtual bool addProperty(std::string name, std::string label, bool value, bool flag,
                             long radioGroup) = 0;
    virtual bool addProperty(std::string name, std::string label, float value, std::string unit,
                             bool flag) = 0;
    virtual bool addProperty(std::string name, std::string label, double value, std::string unit,
                             bool flag) = 0;
    /// Integers are 32 bits; a long beyond them saturates. With options pending this adds an
    /// option property. The unit "color" makes it a colour, 0x00BBGGRR.
    virtual bool addProperty(std::string name, std::string label, int value, std::string unit,
                             bool flag) = 0;
    virtual bool addProperty(std::string name, std::string label, long value, std::string unit,
                             bool flag) = 0;
    /// A file name. `filter`: pairs of description and patterns separated by '|'. `fileFlag`:
    /// true for a file to open, false for one to save.
    virtual bool addProperty(std::string name, std::string label, const char* value,
                             const char* filter, bool fileFlag, bool flag) = 0;
    /// A text; `alternate`: of several lines.
    virtual bool addProperty(std::string name, std::string label, const char* value, bool flag,
                             bool alternate) = 0;
    /// Adds to the pending options, which the next integer property takes.
    virtual void addOption(std::string option) = 0;
    /// `value` is the index of the chosen option.
    virtual bool addOptionProperty(std::string name, std::string label, int value, bool flag) = 0;
    virtual bool addOptionProperty(std::string name, std::string label, long value, bool flag) = 0;

    virtual int getPropertiesCount() = 0;
    /// Empty for an index out of range.
    virtual std::string getPropertyName(int index) = 0;
    /// 0 integer, colour or option; 1 real; 2 boolean; 3 text or file; -1 no such property.
    virtual int getPropertyType(int index) = 0;
    virtual int getPropertyTypeByName(std::string name) = 0;

    virtual bool getProperty(std::string name, bool* value) = 0;
    virtual bool getProperty(std::string name, float* value) = 0;
    virtual bool getProperty(std::string name, double* value) = 0;
    virtual bool getProperty(std::string name, int* value) = 0;
    virtual bool getProperty(std::string name, long* value) = 0;
    virtual bool getProperty(std::string name, std::string* value) = 0;

    virtual bool setProperty(std::string name, bool value) = 0;
    virtual bool setProperty(std::string name, float value) = 0;
    virtual bool setProperty(std::string name, double value) = 0;
    virtual bool setProperty(std::string name, int value) = 0;
    virtual bool setProperty(std::string name, long value) = 0;
    virtual bool setProperty(std::string name, std::string value) = 0;

    /// The object does not own the listener; null removes it.
    virtual bool addListener(std::string name, KorStampListener* listener) = 0;
    /// Shows the object for editing; true when the user confirmed.
    virtual bool edit() = 0;
    virtual void setTitle(std::string title) = 0;
    /// A class that may be edited.
    virtual void addClass(std::string name) { addClass(std::move(name), true); }
    virtual void addCategory(std::string name) = 0;
    /// Merges what `other` has into this object.
    virtual bool append(KorStamp& other) = 0;

    virtual void resetIterators() = 0;
    /// For objects that have no classes; those that have offer an iterator of their own.
    virtual bool getNextClass(std::string* name) {
        if (name != nullptr) name->clear();
        return false;
    }
    virtual bool getNextCategory(std::string* name) = 0;
    virtual bool getNextProperty(std::string* name, int* index) = 0;

    /// `locale`: 1 French, 2 Spanish.
    virtual void addTranslation(long locale, std::string source, std::string text) = 0;
    virtual void addErrorConstraint(std::string name, std::string expression,
                                    std::string message) = 0;
    virtual void addWarningConstraint(std::string name, std::string expression,
                                      std::string message) = 0;
    virtual void addEnableConstraint(std::string name, std::string expression) = 0;
    virtual void addHint(std::string name, std::string text) = 0;
    virtual void addComputation(std::string name, std::string expression) = 0;
    virtual void addClass(std::string name, bool value) = 0;

    // What a text in quotes, a null text and integers of other sizes mean. They are no part of the
    // table: each calls an operation above. A class that overrides some of these names says
    // `using KorStamp::setProperty;` and the like, or hides them.

    bool setProperty(std::string name, const char* value) {
        return setProperty(std::move(name), std::string(value == nullptr ? "" : value));
    }
    template <typename Integer, korvant::EnableIfOtherInteger<Integer> = 0>
    bool setProperty(std::string name, Integer value) {
        return setProperty(std::move(name), korvant::passedInteger(value));
    }
    template <typename Real, korvant::EnableIfReal<Real> = 0>
    bool addProperty(std::string name, std::string label, Real value, const char* unit, bool flag) {
        return addProperty(std::move(name), std::move(label), value,
                           std::string(unit == nullptr ? "" : unit), flag);
    }
    template <typename Integer, korvant::EnableIfInteger<Integer> = 0>
    bool addProperty(std::string name, std::string label, Integer value, const char* unit,
                     bool flag) {
        return addProperty(std::move(name), std::move(label), korvant::passedInteger(value),
                           std::string(unit == nullptr ? "" : unit), flag);
    }
    template <typename Integer, korvant::EnableIfOtherInteger<Integer> = 0>
    bool addProperty(std::string name, std::string label, Integer value, std::string unit,
                     bool flag) {
        return addProperty(std::move(name), std::move(label), korvant::passedInteger(value),
                           std::move(unit), flag);
    }
    /// A text; one with zero bytes too.
    bool addProperty(std::string name, std::string label, const std::string& value, bool flag,
                     bool alternate) {
        return addProperty(name, std::move(label), value.c_str(), flag, alternate) &&
               setProperty(std::move(name), value);
    }
    template <typename Integer, korvant::EnableIfOtherInteger<Integer> = 0>
    bool addOptionProperty(std::string name, std::string label, Integer value, bool flag) {
        return addOptionProperty(std::move(name), std::move(label), korvant::passedInteger(value),
                                 flag);
    }

  protected:
    KorStamp() = default;
    KorStamp(const KorStamp&) = default;
    KorStamp& operator=(const KorStamp&) = default;
};

#endif
