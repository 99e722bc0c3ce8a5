#include "editor/open_documents.h"

#include <algorithm>

#include "base/system/crash_notice.h"
#include "base/system/file_io.h"
#include "base/system/user_folders.h"
#include "base/text/text_encoding.h"

namespace korvant {

OpenDocument::OpenDocument(const DocumentSurroundings& surroundings, std::uint64_t number)
    : id(number),
      document(
          {surroundings.editor, surroundings.output, surroundings.files, surroundings.backups}),
      breakpoints(surroundings.editor),
      plan(surroundings.editor, breakpoints),
      recovery({document, surroundings.window, surroundings.files, surroundings.backups,
                surroundings.clock},
               surroundings.recoveryFolder),
      text(surroundings.editor) {}

OpenDocuments::OpenDocuments(const DocumentSurroundings& surroundings)
    : surroundings_(surroundings) {
    make();
}

OpenDocument& OpenDocuments::make() {
    all_.push_back(std::make_unique<OpenDocument>(surroundings_, ++ids_));
    OpenDocument& made = *all_.back();
    made.recovery.copyChanged = [this] { noteCopies(); };
    return made;
}

/// Whoever looks after a crash is told of the text that was in view, if it is there.
void OpenDocuments::noteCopies() const {
    std::string path = shown().recovery.copyPath();
    for (const auto& one : all_)
        if (path.empty()) path = one->recovery.copyPath();
    setCrashNoticePath(path);
}

std::size_t OpenDocuments::indexOf(const OpenDocument& document) const {
    const auto found = std::find_if(
        all_.begin(), all_.end(), [&document](const auto& one) { return one.get() == &document; });
    return static_cast<std::size_t>(found - all_.begin());
}

void OpenDocuments::move(std::uint64_t id, std::size_t index) {
    const std::uint64_t inView = shown().id;
    const auto at =
        std::find_if(all_.begin(), all_.end(), [id](const auto& one) { return one->id == id; });
    if (at == all_.end()) return;
    const auto to = all_.begin() + static_cast<std::ptrdiff_t>(std::min(index, all_.size()));
    to > at ? std::rotate(at, at + 1, to) : std::rotate(to, at, at + 1);
    while (all_[shown_]->id != inView) shown_ = (shown_ + 1) % all_.size();
}

OpenDocument* OpenDocuments::find(std::uint64_t id) const {
    for (const auto& one : all_)
        if (one->id == id) return one.get();
    return nullptr;
}

OpenDocument* OpenDocuments::findFile(const std::string& path) const {
    FileStatus wanted, status;
    const bool exists =
        surroundings_.files.status(path, wanted) == 0 && wanted.kind == FileStatus::Kind::regular;
    for (const auto& one : all_) {
        const std::string& open = one->document.path();
        if (open.empty()) continue;
        if (absolutePath(open) == absolutePath(path)) return one.get();
        if (exists && surroundings_.files.status(open, status) == 0 && status == wanted)
            return one.get();
    }
    return nullptr;
}

OpenDocument* OpenDocuments::findSource(const std::string& source) const {
    if (OpenDocument* found = findFile(source)) return found;
    for (const auto& one : all_)
        if (!one->document.path().empty() && nameOf(one->document.path()) == source)
            return one.get();
    return nullptr;
}

OpenDocument& OpenDocuments::neighbour(int step) const {
    const auto number = static_cast<int>(count());
    const int at = (static_cast<int>(shown_) + step % number + number) % number;
    return *all_[static_cast<std::size_t>(at)];
}

OpenDocument& OpenDocuments::add() {
    OpenDocument& added = make();
    touch(added);
    show(added);
    return added;
}

void OpenDocuments::show(OpenDocument& document) {
    if (&document == &shown()) return;
    shown().recovery.keepIfChanged();
    shown().stops = shown().plan.active();
    shown().text.hide();
    shown_ = indexOf(document);
    document.text.show();
    document.breakpoints.shown();
}

void OpenDocuments::remove(OpenDocument& document) {
    const std::size_t index = indexOf(document);
    if (index == shown_) show(*all_[index + 1 < count() ? index + 1 : index - 1]);
    document.text.release();
    all_.erase(all_.begin() + static_cast<std::ptrdiff_t>(index));
    if (shown_ > index) --shown_;
}

void OpenDocuments::release() {
    for (const auto& one : all_) one->text.release();
}

std::vector<DocumentTab> OpenDocuments::tabs() const {
    std::vector<DocumentTab> tabs;
    for (const auto& one : all_)
        tabs.push_back({one->id, one->document.name(), decodeForDisplay(one->document.path()),
                        one->document.modified()});
    const auto same = [&tabs](const std::string& name) {
        return std::count_if(tabs.begin(), tabs.end(),
                             [&name](const DocumentTab& one) { return one.name == name; }) > 1;
    };
    std::vector<std::string> names;
    for (const DocumentTab& tab : tabs) {
        const std::string folder = tab.detail.substr(0, tab.detail.find_last_of("/\\") + 1);
        const std::string inside = nameOf(folder.substr(0, folder.find_last_not_of("/\\") + 1));
        const bool tells = !tab.detail.empty() && !inside.empty() && same(tab.name);
        names.push_back(tells ? tab.name + " - " + inside : tab.name);
    }
    for (std::size_t i = 0; i < tabs.size(); ++i) tabs[i].name = std::move(names[i]);
    return tabs;
}

}  // namespace korvant
