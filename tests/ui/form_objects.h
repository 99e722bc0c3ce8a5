// Objects as scripts would make them, for the tests of forms.
#pragma once

#include <string>

#include "korvantide/script_object.h"

namespace korvant::test {

/// A pump: two classes, every type letter, errors, warnings, a disabled and a locked row, radios,
/// computations, hints, and French and Spanish.
void makePump(ScriptObject& object);

/// A drill hole: a class with the collar and a group of three layers.
void makeDrillHole(ScriptObject& object);

/// One class of `count` reals, each with an error condition; every tenth one is computed.
void makeLarge(ScriptObject& object, int count);

/// The value of a property as the host reads it.
double realOf(ScriptObject& object, const std::string& name);
int integerOf(ScriptObject& object, const std::string& name);
bool booleanOf(ScriptObject& object, const std::string& name);
std::string textOf(ScriptObject& object, const std::string& name);

/// The language of the module, for a while.
class LocaleFor {
  public:
    explicit LocaleFor(std::int32_t locale) : before_(ScriptObject::m_locale) {
        ScriptObject::m_locale = locale;
    }
    ~LocaleFor() { ScriptObject::m_locale = before_; }
    LocaleFor(const LocaleFor&) = delete;
    LocaleFor& operator=(const LocaleFor&) = delete;

  private:
    std::int32_t before_;
};

}  // namespace korvant::test
