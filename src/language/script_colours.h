// What kind of thing each name of a script is, for colours; and small words between the lines.
#pragma once

#include <string>
#include <vector>

#include "language/meanings.h"

namespace korvant {

enum class NameColour {
    nameSpace,
    classType,
    interfaceType,
    enumType,
    enumMember,
    parameter,
    variable,
    property,
    function,
    method
};

struct ColouredName {
    ByteRange range;
    NameColour colour = NameColour::variable;
    bool declares = false;
    bool readOnly = false;
};

/// Names in `range` whose meaning is known, in the order of the text.
std::vector<ColouredName> colouredNames(Meanings& meanings, ByteRange range);

struct InlayHint {
    std::size_t offset = 0;
    std::string text;     ///< ": int", "depth:"
    bool isType = false;  ///< else the name of a parameter
};

/// Types behind "auto" variables, names of parameters in front of literal arguments.
std::vector<InlayHint> hintsIn(Meanings& meanings, ByteRange range);

}  // namespace korvant
