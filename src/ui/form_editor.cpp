#include "ui/form_editor.h"

#include <exception>
#include <memory>

#include "object/edit_session.h"
#include "ui/form_dialog.h"
#include "ui/form_sheet.h"
#include "ui/ui_runtime.h"

namespace korvant::ui {
namespace {

std::unique_ptr<FormWindow> makeForm(EditSession& session) {
    if (session.kind() == FormKind::sheet)
        return std::make_unique<CListCtrlExSheet>(dialogParent(), session);
    return std::make_unique<CListCtrlExDialog>(dialogParent(), session);
}

}  // namespace

bool WxObjectEditor::run(EditSession& session) {
    if (!startToolkit()) {
        sayNoDisplay();
        return false;
    }
    bool confirmed = false;
    try {
        runModal([&] { confirmed = makeForm(session)->edit(); });
    } catch (const std::exception&) {
        return false;
    }
    return confirmed;
}

void installFormEditor() {
    static WxObjectEditor editor;
    setObjectEditor(&editor);
}

}  // namespace korvant::ui
