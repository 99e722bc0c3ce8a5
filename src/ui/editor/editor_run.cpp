#include "ui/editor/editor_run.h"

#include <memory>

#include "base/system/crash_notice.h"
#include "host/run/script_session.h"
#include "ui/editor/editor_dialog.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::ui {
namespace {

CEditorDlg* openEditor = nullptr;

/// Never destroyed, so that nothing of it runs at exit.
std::optional<std::string>& editedFile() {
    static auto* const path = new std::optional<std::string>;
    return *path;
}

class UiScope {
  public:
    UiScope() { switchUi(true); }
    ~UiScope() { switchUi(false); }
    UiScope(const UiScope&) = delete;
    UiScope& operator=(const UiScope&) = delete;
};

/// Destroyed by the toolkit later, when no event can be on its way to it any more.
struct DestroyWindow {
    void operator()(CEditorDlg* window) const {
        openEditor = nullptr;
        window->Destroy();
    }
};

void openAndWait(const EditorOpening& opening) {
    const std::unique_ptr<CEditorDlg, DestroyWindow> window(new CEditorDlg(opening.families));
    openEditor = window.get();
    window->setHost(opening.engine, opening.context);
    window->setHostText(opening.text);
    window->setHostTitle(opening.title);
    window->setHostFile(opening.file);
    window->runModal();
    opening.text = window->hostText();
    editedFile() = window->documentPath();
}

}  // namespace

void runScriptEditor(const EditorOpening& opening) {
    if (openEditor) return openEditor->activate();
    editedFile().reset();
    if (moduleSession().running()) return;
    if (!startToolkit()) return sayNoDisplay();
    const UiScope scope;
    const CrashNotice notice;
    runModal([&] {
        try {
            openAndWait(opening);
        } catch (...) {
            // Out of memory: the host keeps its text, and nothing passes through its loop.
        }
    });
}

const std::optional<std::string>& lastEditedFile() {
    return editedFile();
}

}  // namespace korvant::ui
