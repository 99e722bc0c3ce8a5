#include "object/form/form_memory.h"

namespace korvant {

FormRectangle& rememberedRectangle(FormKind kind) {
    static FormRectangle sheet;
    static FormRectangle dialog;
    return kind == FormKind::sheet ? sheet : dialog;
}

}  // namespace korvant
