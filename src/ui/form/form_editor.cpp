#include "ui/form/form_editor.h"

#include <exception>

#include "object/form/edit_session.h"
#include "ui/form/form_dialog.h"
#include "ui/form/form_sheet.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::ui {
namespace {

DialogOwner<FormWindow> makeForm(EditSession& session) {
    if (session.kind() == FormKind::sheet)
        return DialogOwner<FormWindow>(new CListCtrlExSheet(dialogParent(), session));
    return DialogOwner<FormWindow>(new CListCtrlExDialog(dialogParent(), session));
}

}  // namespace

bool WxObjectEditor::run(EditSession& session) {
    if (!startToolkit()) {
        sayNoDisplay();
        return false;
    }
    bool confirmed = false;
    runModal([&] {
        try {
            confirmed = makeForm(session)->edit();
        } catch (const std::exception&) {
            confirmed = false;
        }
    });
    return confirmed;
}

bool WxObjectEditor::attended() {
    return startToolkit();
}

void installFormEditor() {
    static WxObjectEditor editor;
    setObjectEditor(&editor);
}

}  // namespace korvant::ui
