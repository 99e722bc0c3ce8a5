// Captions and texts of forms in the three languages of the module.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace korvant {

/// What a form says besides the texts of its object.
enum class FormText {
    none,  ///< the empty text
    ok,
    cancel,
    check,  ///< the button that shows all errors and warnings
    noFindings,
    errors,
    warnings,
    add,
    copy,
    remove,
    order,
    element,            ///< label of the choice of a group's element
    noElement,          ///< description of a group page without elements
    noElementAtAll,     ///< the same where none can be added
    noElementChosen,    ///< of one with elements of which none is current
    needsOuterElement,  ///< behind the name of the group around it
    first,
    last,
    up,
    down,
    undo,
    redo,
    reset,
    filter,
    property,  ///< head of the label column
    value,
    unit,
    chooseFile,
    chooseColour,
    allFiles,
    yes,
    no,
    disabledBy,    ///< before the conditions that disable a row
    lockedRow,     ///< the script allows no editing of this row
    lockedPage,    ///< the script allows no editing of this page
    needsNumber,   ///< a refused text: empty where a number is needed
    notFinite,     ///< a refused number: not-a-number or infinity
    notWhole,      ///< a refused number: has a fraction
    beyond32Bits,  ///< a refused number: does not fit
    needsOption,   ///< a refused text: none of the options
    needsColour,   ///< a refused text: no colour
    needsYesOrNo,  ///< a refused text: no boolean
    tooLong,       ///< a text that no field takes
    overwrite,     ///< question before a chosen file is overwritten
    stopScript,
    keepChanges,     ///< question before a form with changes is left
    foundElsewhere,  ///< before the other pages on which a search found rows
    foundNowhere,
    markedPages,  ///< before pages with a mark whose tabs may be out of sight
    count_
};

/// The text in the language of `locale` (1 French, 2 Spanish, any other English), in Windows
/// Western bytes.
std::string formText(FormText text, std::int32_t locale);
/// In the language of the module.
std::string formText(FormText text);

/// Caption of the rows that stand before the first category.
std::string defaultCategoryCaption(std::int32_t locale);

/// Summaries that head the report of a property or of a form; `several` chooses the plural.
std::string errorSummary(bool several, std::int32_t locale);
std::string warningSummary(bool several, std::int32_t locale);

/// Adds the captions of the message box buttons, in Windows Western bytes. A key that is there
/// keeps its caption; a negative locale adds nothing.
void addButtonCaptions(std::map<unsigned long, const char*>& captions, std::int32_t locale);

}  // namespace korvant
