// The exported functions that need windows.
#include <string>
#include <utility>

#include "host/library/dialog_functions.h"
#include "korvantide/host_interface.h"
#include "korvantide/korvantide.h"
#include "module/configuration.h"
#include "module/families.h"
#include "module/guarded.h"
#include "module/window_services.h"
#include "ui/editor/editor_run.h"
#include "ui/editor/editor_settings.h"

asIScriptContext* KORVANTIDE_CALL ConfigureScriptEngine(asIScriptEngine* engine) {
    return korvant::configureEngine(engine, korvant::windowServices);
}

std::int32_t KORVANTIDE_CALL FeedScriptInput(const char* line) {
    return korvant::guarded(0, [&] {
        if (line == nullptr) return 0;
        korvant::feedWindowInput(line);
        return 1;
    });
}

namespace {

/// Never destroyed, so that nothing of it runs at exit.
std::string& fileToEdit() {
    static auto* const path = new std::string;
    return *path;
}

}  // namespace

void KORVANTIDE_CALL RunScriptEditor(asIScriptEngine* engine, asIScriptContext* context,
                                     std::string& script, std::string title) {
    korvant::guarded(0, [&] {
        const korvant::UiScopeGuard scope;
        const std::string file = std::exchange(fileToEdit(), {});
        korvant::ui::runScriptEditor(
            {engine, context, script, title, korvant::allFamilies(), file});
        return 0;
    });
}

void KORVANTIDE_CALL SetEditedFile(const char* path) {
    korvant::guarded(0, [&] {
        fileToEdit() = path ? path : "";
        return 0;
    });
}

const char* KORVANTIDE_CALL GetEditedFile(void) {
    return korvant::guarded<const char*>(nullptr, []() -> const char* {
        const auto& file = korvant::ui::lastEditedFile();
        return file ? file->c_str() : nullptr;
    });
}

int32_t KORVANTIDE_CALL SetEditorLayout(int32_t layout) {
    return korvant::guarded(0, [&] {
        using Wish = korvant::ui::EditorLayoutWish;
        static constexpr Wish kWishes[] = {Wish::users, Wish::classic, Wish::full};
        if (layout < KORVANT_EDITOR_AS_CHOSEN || layout > KORVANT_EDITOR_FULL) return 0;
        korvant::ui::setEditorLayout(kWishes[layout]);
        return 1;
    });
}
