#include "module/families.h"

#include "host/engine/array_registration.h"
#include "host/library/console_functions.h"
#include "host/library/dialog_functions.h"
#include "host/library/math_functions.h"
#include "host/library/run_library.h"
#include "host/library/string_functions.h"
#include "host/library/string_type.h"
#include "object/script/object_binding.h"

namespace korvant {

std::span<const RegisterFamily> registrationOrder() {
    static const RegisterFamily kOrder[] = {
        joinRuns,
        registerStringType,
        registerFileFunctions,
        registerConsoleFunctions,
        registerDialogFunctions,
        registerObjectType,
        registerTimingFunctions,
        registerMathFunctions,
        registerStringFunctions,
    };
    return kOrder;
}

std::span<const FunctionFamily> allFamilies() {
    static const FunctionFamily kFamilies[] = {
        {"The type string", "string", stringTypeRows()},
        {"Arrays", "array", arrayMethodRows()},
        {"Files", nullptr, fileFunctionRows()},
        {"Console", nullptr, consoleFunctionRows()},
        {"Dialogs and progress", nullptr, dialogFunctionRows()},
        {"Property objects", "Object", objectMethodRows()},
        {"Run time", nullptr, timingFunctionRows()},
        {"Mathematics", nullptr, mathFunctionRows()},
        {"Texts", nullptr, stringFunctionRows()},
    };
    return kFamilies;
}

}  // namespace korvant
