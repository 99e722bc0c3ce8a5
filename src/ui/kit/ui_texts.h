// What the windows say besides the texts of scripts, in the three languages of the module.
#pragma once

#include <wx/string.h>

#include <cstdint>
#include <map>
#include <string>

namespace korvant::ui {

enum class UiText {
    copy,
    paste,
    selectAll,
    stopScript,
    needsWholeNumber,  ///< a refused text of an integer prompt
    needsNumber,       ///< a refused text of a prompt for a real number
    tooLongToEdit,     ///< a text prompt whose initial text no field can take
    tooLongForField,   ///< a refused text: the field may have cut it
    beyondFloat,       ///< a number that single precision does not hold
    moreColours,
    count_
};

/// In the language of the module.
wxString uiText(UiText text);

/// The caption of a button (box_button) in the language of the module; empty for none.
wxString buttonCaption(unsigned long button);
/// The same, but what the request brought stands first. Bytes of a script.
wxString buttonCaption(unsigned long button, const std::map<unsigned long, std::string>& given);

}  // namespace korvant::ui
