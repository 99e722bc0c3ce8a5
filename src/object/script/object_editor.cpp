#include "object/script/object_editor.h"

#include <cstdio>

namespace korvant {

namespace {

HeadlessEditor headless;
ObjectEditor* installed = nullptr;

}  // namespace

bool HeadlessEditor::run(EditSession&) {
    if (!told_) std::fputs("korvant: no window to edit properties in; cancelled\n", stderr);
    told_ = true;
    return false;
}

ObjectEditor* setObjectEditor(ObjectEditor* editor) {
    ObjectEditor* const before = installed;
    installed = editor;
    return before;
}

ObjectEditor& objectEditor() {
    return installed != nullptr ? *installed : headless;
}

}  // namespace korvant
