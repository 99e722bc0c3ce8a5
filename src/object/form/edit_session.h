// What a form shows and does, without a window.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "object/form/file_filter.h"
#include "object/form/form_memory.h"

namespace korvant {

struct ObjectModel;
struct EditState;

/// How bad a row or a page is.
enum class Severity : std::uint8_t { none, warning, error };

/// What a row is; never changes while the session lives. Texts are translated and are bytes as
/// scripts give them: decodeForDisplay() makes them UTF-8.
struct EditRow {
    std::int32_t property = 0;  ///< index in the object: the row's name in every call
    /// s text, e text of several lines, F file to open, f file to save, l integer, c colour,
    /// o option, d real, b boolean, ? nothing that can be edited
    char letter = '?';
    std::string name;  ///< the key, not translated
    std::string label;
    std::string unit;            ///< empty for colours, options and files
    std::int32_t category = -1;  ///< see EditSession::categoryCaption()
    std::int32_t radioGroup = -1;
    std::vector<std::string> options;  ///< of an option row
    std::vector<FileFilter> filters;   ///< of a file row; at least one
};

/// What a row looks like now.
struct EditRowState {
    std::string text;       ///< the value as shown; typed back it changes nothing
    bool enabled = true;    ///< false: an enable condition does not hold; grey
    bool locked = false;    ///< by the script or for want of an element; normal text, no editor
    bool changed = false;   ///< since opening; bold label
    bool editable = true;   ///< enabled and not locked
    bool visible = true;    ///< passes the filter
    bool computed = false;  ///< a computation writes it
    bool empty = false;     ///< of a group that has no current element: shows nothing
    bool radioSet = false;  ///< a radio boolean that is set: clearing it does nothing
    Severity severity = Severity::none;
};

/// One page, one a class; or the whole of a single dialog.
struct EditPage {
    std::string caption;     ///< translated class name; the object's title in a dialog
    bool editable = true;    ///< the class boolean
    std::int32_t first = 0;  ///< property index of the first row
    std::int32_t last = -1;  ///< of the last row; below `first` when the page has no rows
    bool isGroup = false;
};

/// The bar above the rows of a group page.
struct EditGroupBar {
    std::vector<std::string> elements;  ///< captions in order: "2: " and its first text, or "2"
    std::int32_t current = -1;          ///< -1: none
    std::vector<Severity> severities;   ///< of the elements
    // False hides the button.
    bool showAdd = false, showCopy = false, showRemove = false, showOrder = false;
    // False greys it.
    bool canAdd = false, canCopy = false, canRemove = false, canOrder = false;
};

/// Where to put the user: page -1 for nowhere, property -1 for no row of it.
struct EditPlace {
    int page = -1;
    std::int32_t property = -1;
};

/// Outcome of a commit. A refused value is not stored; `message` (translated) says why.
struct EditCommit {
    bool accepted = true;
    std::string message;
};

/// A row that fails, with the elements that were current, outer groups first.
struct EditFinding {
    EditPlace place;
    std::vector<std::int32_t> elements;
    std::vector<std::string> messages;  ///< translated, with markup; at least one
};

/// Outcome of OK. Both texts are HTML: `report` names the pages, or in a dialog the rows, that
/// fail, `details` the first failing rows with what is wrong; `place` is the first of them.
struct EditCheck {
    bool passed = true;
    std::string report;
    std::string details;
    std::vector<EditFinding> findings;
    EditPlace place;
};

/// What a view has to draw again.
struct EditChanges {
    std::vector<std::int32_t> rows;  ///< ascending; value, look or description
    std::vector<int> pages;          ///< ascending; severity or group bar
    bool filter = false;             ///< which rows are visible
    bool history = false;            ///< canUndo() or canRedo()
};

/// The editing of one object: a working copy of its values, and everything that the rules say
/// about it. A view shows rows and pages, passes on what the user does and draws again what
/// takeChanges() names. Nothing reaches the object before its edit() copies it back.
///
/// Rows are named by property index, pages from 0. An index out of range is answered with an empty
/// row, page or state, and nothing happens. Any call may throw std::bad_alloc.
class EditSession {
  public:
    explicit EditSession(const ObjectModel& object);
    ~EditSession();
    EditSession(const EditSession&) = delete;
    EditSession& operator=(const EditSession&) = delete;

    /// A sheet of pages for two or more classes, else a dialog with one page.
    FormKind kind() const;
    /// The object's title, not translated.
    const std::string& title() const;
    /// The language that the session was opened in.
    std::int32_t locale() const;

    int pageCount() const;
    const EditPage& page(int page) const;
    Severity pageSeverity(int page) const;
    int pageOf(std::int32_t property) const;  ///< -1: on none
    bool pageHasUnits(int page) const;

    std::int32_t rowCount() const;
    const EditRow& row(std::int32_t property) const;
    EditRowState state(std::int32_t property) const;
    /// The value with all its digits: what a field begins with and what is copied. state() shows
    /// no more than ten significant digits of a computed number.
    std::string fullText(std::int32_t property) const;
    /// `category` as in EditRow: -1 gives the caption of the rows without one.
    std::string categoryCaption(std::int32_t category) const;
    std::int32_t findRow(const std::string& name) const;  ///< -1: no such property
    /// HTML for the pane below the rows: heading, hint, reports, why it cannot be edited, and
    /// which of its expressions could not be evaluated.
    std::string description(std::int32_t property) const;
    /// HTML; empty when nothing fails.
    const std::string& errorReport(std::int32_t property) const;
    const std::string& warningReport(std::int32_t property) const;
    /// The messages of the errors, or warnings, that stand; in order, translated.
    std::vector<std::string> failing(std::int32_t property, bool errors) const;

    // The working values, whatever the row's type. Colours are 0x00BBGGRR.
    const std::string& textValue(std::int32_t property) const;
    std::int32_t integerValue(std::int32_t property) const;
    double realValue(std::int32_t property) const;
    bool booleanValue(std::int32_t property) const;

    // Changing values. Each is refused on a row that is not editable; each runs the computations
    // and rules and becomes one step of undo when it changed something.

    /// What was typed, for every kind of row. The text that the row shows changes nothing.
    EditCommit commitText(std::int32_t property, const std::string& typed);
    /// Setting a radio boolean clears the others of its group; clearing one does nothing.
    EditCommit setBoolean(std::int32_t property, bool value);
    EditCommit setOption(std::int32_t property, std::int32_t option);
    EditCommit setColour(std::int32_t property, std::int32_t colour);
    /// Back to the value at opening.
    EditCommit resetRow(std::int32_t property);

    bool canUndo() const;
    bool canRedo() const;
    EditPlace undo();
    EditPlace redo();

    // Groups. Each is false, and does nothing, where the bar does not allow it.

    EditGroupBar groupBar(int page) const;
    /// Browsing is always allowed. -1 leaves no element current.
    bool chooseElement(int page, std::int32_t element);
    /// The layout's values after the current element; the new one becomes current.
    bool addElement(int page);
    bool copyElement(int page);
    bool removeElement(int page);
    /// `order`: for each new place the index of the element that goes there.
    bool orderElements(int page, const std::vector<std::int32_t>& order);

    /// Shows only rows that hold every word in label, category, unit, hint or value, whatever the
    /// case of the letters; an empty text shows all. Affects no rule.
    void setFilter(const std::string& words);
    /// How many rows of the page pass the filter.
    std::int32_t visibleRows(int page) const;
    /// The next row of the page that is visible and can be edited, in the given direction from
    /// `property`, -1 for none.
    std::int32_t nextEditable(std::int32_t property, bool forward) const;

    /// Checks every page and every element of every group, as OK does. Warnings do not fail it.
    EditCheck confirm();
    /// HTML: all errors, then all warnings, with links for follow().
    std::string summary();
    /// Goes to the row, and to the element, that a link of the summary names.
    EditPlace follow(const std::string& link);

    /// What changed since the last call.
    EditChanges takeChanges();
    /// True when a value or a group differs from what it was at opening.
    bool changed() const;

  private:
    friend struct ObjectAccess;
    std::unique_ptr<EditState> state_;
};

}  // namespace korvant
