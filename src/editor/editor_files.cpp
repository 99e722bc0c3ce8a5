// New, Open, Save and scrambling: the commands that change which text is in the editor.
#include "base/system/file_io.h"
#include "base/system/user_folders.h"
#include "editor/document/scramble.h"
#include "editor/script_editor.h"

namespace korvant {

namespace {

constexpr char kScrambled[] =
    "The text was scrambled or restored with the key. This is no encryption. No recovery copies "
    "are kept of it unless they are turned on again in the context menu.";
/// The dialog's buffer of 1284 characters, less the terminator.
constexpr std::size_t kLongestPath = 1283;

FileDialogRequest fileRequest(bool saving, bool fileMustExist) {
    FileDialogRequest request;
    request.saving = saving;
    request.title = fileMustExist ? "Open Source File" : "Save Source File";
    request.filters = {{"Source Files (*.as)", "*.as"}, {"All Files (*.*)", "*.*"}};
    request.fileMustExist = fileMustExist;
    request.pathMustExist = true;
    request.longestPath = kLongestPath;
    return request;
}

}  // namespace

void ScriptEditor::newDocument() {
    if (tabs_) return newTab();
    endRun();
    const bool saveFirst =
        document().modified() && window_.ask(EditorDocument::kSaveChanges, false) == Answer::yes;
    if (saveFirst) save();
    rememberFile();
    if (document().modified()) recovery().givenUp();
    emptyEditor();
    document().setModified(false);
    recovery().begin();
    // Deliberate: a later Save writes a file of this name in the current folder.
    document().setPath(EditorDocument::kUntitled);
    refreshTitle();
}

void ScriptEditor::emptyEditor() {
    const OwnText own(*this);
    breakpoints().reset();
    plan().reset();
    current().problems.clear();
    document().makeEmpty();
    recovery().begin();
    window_.setMenuChecked(command_id::kRecoveryCopies, recovery().enabled());
}

void ScriptEditor::openDocument() {
    if (!tabs_) endRun();
    if (const auto path = askPath(false)) openPath(*path);
}

/// The dialogs that come with some desktops do not enforce these limits themselves. Where a text
/// begins without a file, saving makes one.
/// Installed they are beside the manual's folder, and in a tree that is built above the programs.
std::string ScriptEditor::examplesFolder() const {
    const std::string page = manualPage(programFolder_);
    const std::string manual = page.substr(0, page.find_last_of("/\\"));
    for (const std::string& folder : {manual + "/../examples", programFolder_ + "/examples",
                                      programFolder_ + "/../../examples"}) {
        FileStatus status;
        const bool is = files_.status(folder, status) == 0;
        if (is && status.kind == FileStatus::Kind::folder) return folder;
    }
    return {};
}

void ScriptEditor::openExample() {
    guarded([this] {
        FileDialogRequest request = fileRequest(false, true);
        request.folder = examplesFolder();
        if (request.folder.empty()) return helpAt({});
        const auto path = window_.askFile(request);
        if (path && !path->empty()) openPath(*path);
    });
}

std::optional<std::string> ScriptEditor::askPath(bool saving) {
    const bool makesFiles = saving && tabs_;
    for (;;) {
        FileDialogRequest request = fileRequest(saving, !makesFiles);
        if (makesFiles && document().path().empty())
            request.suggestedName = document().name() + ".as";
        auto path = window_.askFile(request);
        if (!path || path->empty() || path->size() > kLongestPath) return std::nullopt;
        FileStatus status;
        if (!saving || makesFiles || files_.status(*path, status) != 0 ||
            status.kind != FileStatus::Kind::none)
            return path;
        window_.errorBox(*path + "\nFile not found.\nCheck the file name and try again.");
    }
}

void ScriptEditor::openPath(const std::string& path) {
    if (tabs_) return openTab(path);
    rememberFile();
    recovery().dropping();
    // Deliberate: the text goes before the file is tried. It can be undone, and is kept.
    emptyEditor();
    const OwnText own(*this);
    if (document().load(path)) {
        recovery().saved();
        noteRecent(path);
        recallFile();
    }
    refreshTitle();
}

void ScriptEditor::openRecent(int index) {
    if (index >= static_cast<int>(recentFiles_.paths().size())) return;
    if (!tabs_) endRun();
    openPath(std::string(recentFiles_.paths()[static_cast<std::size_t>(index)]));
}

void ScriptEditor::noteRecent(const std::string& path) {
    recentFiles_.add(absolutePath(path));
    window_.setRecentFiles(recentFiles_.paths());
}

void ScriptEditor::saveAs() {
    if (const auto path = askPath(true)) saveTo(*path);
}

void ScriptEditor::save() {
    if (document().path().empty())
        saveAs();
    else
        saveTo(document().path());
}

void ScriptEditor::saveTo(const std::string& path) {
    // A copy of its own: saving sets the document's path.
    const std::string target = path;
    if (!document().saveTo(target)) return;
    recovery().saved();
    noteRecent(target);
    refreshTitle();
}

void ScriptEditor::crypt() {
    std::int32_t& key = rememberedScrambleKey();
    // Deliberate: Cancel scrambles too, with the key as it was.
    key = session_.coveredFrontend().promptInt("Key:", key);
    if (editor_.length() == 0) return;
    std::optional<std::string> text = editor_.text();
    if (!text) return output_.show(kNoMemory);
    scramble(*text, key);
    // A text that somebody hides is not to lie readable in the user's folder.
    recovery().setEnabled(false);
    window_.setMenuChecked(command_id::kRecoveryCopies, false);
    const OwnText own(*this);
    if (!putScrambled(*text)) return output_.show(kNoMemory);
    output_.show(kScrambled);
}

/// One step of undo. The control forgets its markers with the whole text, so where there are any
/// the text is replaced line by line.
bool ScriptEditor::putScrambled(const std::string& text) {
    if (!editor_.nextMarker(0, ~0)) return editor_.replaceText(text);
    editor_.takeStatus();
    {
        const UndoStep step(editor_);
        for (ControlLine line; line.index < editor_.lineCount(); ++line.index) {
            const TextSpan span{editor_.lineStart(line), editor_.lineEnd(line)};
            if (span.empty()) continue;
            editor_.setTarget(span);
            editor_.replaceTarget(
                std::string_view(text).substr(static_cast<std::size_t>(span.start),
                                              static_cast<std::size_t>(span.end - span.start)),
                false);
        }
    }
    editor_.select(0, 0);
    return editor_.takeStatus();
}

}  // namespace korvant
