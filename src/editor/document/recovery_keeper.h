// When unsaved text is kept, and how it is offered again.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/system/clock.h"
#include "editor/control/editor_window.h"
#include "editor/document/backup_store.h"
#include "editor/document/editor_document.h"
#include "editor/document/recovery_store.h"

namespace korvant {

/// What keeping works with; each must outlive it.
struct RecoveryParts {
    EditorDocument& document;
    EditorWindow& window;
    FileOperations& files;
    BackupStore& backups;
    Clock& clock;
};

class RecoveryKeeper {
  public:
    RecoveryKeeper(const RecoveryParts& parts, const std::string& folder);

    /// Another text is in the editor; the copy of the one before is not needed any more.
    void begin();
    /// A change of the text. Nothing is written yet, since the control is in the middle of it.
    void changed();
    /// Writes a copy when one is due. To be called after every command and once a second.
    void keepIfDue();
    /// Writes a copy when anything has changed since the last one. To be called before a script
    /// takes the thread, for as long as it likes and with whatever faults it has.
    void keepIfChanged();
    /// The text is safe elsewhere.
    void saved();
    /// The text is about to go from the editor, where it may not have been saved.
    void dropping();
    /// The user gave the text up; it goes to the backups.
    void givenUp();
    /// The editor closes. `delivered`: the host has the text, and no file is behind it.
    void closing(bool delivered);

    /// Whether copies of this document are kept at all. Turning it off removes the one that is.
    void setEnabled(bool enabled);
    bool enabled() const noexcept { return enabled_; }

    /// Says where the copy on disk is; empty while there is none.
    std::string copyPath() const { return store_.currentPath(); }
    /// copyPath() may be another one.
    std::function<void()> copyChanged;

    /// Asks about what earlier openings left. True when a text was taken into the document.
    bool offer();
    /// The same for an editor of several texts: each that is wanted goes into the document whose
    /// keeper `placeFor` gives, and that is shown by then.
    void offerAll(const std::function<RecoveryKeeper&(const RecoveryRecord&)>& placeFor);

  private:
    using Take = std::function<bool(const FoundRecord&)>;  ///< true: that was the last one
    bool offer(const Take& take);
    void keepNow(bool delivered);
    void removeCopy();
    bool elsewhere(const RecoveryRecord& record, std::uint64_t hostHash);
    bool concerns(const RecoveryRecord& record, const RecoveryRecord& now) const;
    bool restore(const FoundRecord& found);
    void giveUp(const FoundRecord& found);

    EditorDocument& document_;
    EditorWindow& window_;
    FileOperations& files_;
    BackupStore& backups_;
    Clock& clock_;
    RecoveryStore store_;
    RecoveryTimer timer_;
    bool enabled_ = true;
};

}  // namespace korvant
