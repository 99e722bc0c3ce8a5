#include "ui/kit/ui_texts.h"

#include "base/text/text_encoding.h"
#include "host/services/frontend.h"
#include "korvantide/script_object.h"
#include "object/form/form_texts.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

struct Row {
    const char* english;
    const char* french;
    const char* spanish;
};

/// In the order of UiText; UTF-8.
constexpr Row kTexts[] = {
    {"Copy", "Copier", "Copiar"},
    {"Paste", "Coller", "Pegar"},
    {"Select all", "Tout sélectionner", "Seleccionar todo"},
    {"Stop the script", "Arrêter le script", "Detener el script"},
    {"Enter a whole number from -2147483648 to 2147483647.",
     "Entrez un nombre entier de -2147483648 à 2147483647.",
     "Introduzca un número entero de -2147483648 a 2147483647."},
    {"Enter a number, for example 1.5 or 2e-3.", "Entrez un nombre, par exemple 1.5 ou 2e-3.",
     "Introduzca un número, por ejemplo 1.5 o 2e-3."},
    {"This text is too long to be edited here; it stays as it is.",
     "Ce texte est trop long pour être modifié ici ; il reste tel quel.",
     "Este texto es demasiado largo para editarlo aquí; queda como está."},
    {"At most 60,000 characters fit in here.", "60 000 caractères au plus tiennent ici.",
     "Aquí caben 60.000 caracteres como máximo."},
    {"This number is too large; the limit is 3.4e+38.",
     "Ce nombre est trop grand ; la limite est 3.4e+38.",
     "Este número es demasiado grande; el límite es 3.4e+38."},
    {"More colours...", "Autres couleurs...", "Más colores..."},
};
static_assert(std::size(kTexts) == static_cast<std::size_t>(UiText::count_));

/// The button that ends a loop of boxes is no part of the table that scripts can see.
wxString builtInCaption(unsigned long button) {
    if (button == box_button::kStopScript) return uiText(UiText::stopScript);
    std::map<unsigned long, const char*> captions;
    addButtonCaptions(captions, std::max(ScriptObject::m_locale, 0));
    const auto found = captions.find(button);
    return found == captions.end() ? wxString() : fromUtf8(decodeWestern(found->second));
}

}  // namespace

wxString uiText(UiText text) {
    const Row& row = kTexts[static_cast<std::size_t>(text)];
    switch (ScriptObject::m_locale) {
        case 1:
            return fromUtf8(row.french);
        case 2:
            return fromUtf8(row.spanish);
        default:
            return fromUtf8(row.english);
    }
}

wxString buttonCaption(unsigned long button) {
    return builtInCaption(button);
}

wxString buttonCaption(unsigned long button, const std::map<unsigned long, std::string>& given) {
    const auto found = given.find(button);
    return found == given.end() || found->second.empty() ? builtInCaption(button)
                                                         : toDisplay(found->second);
}

}  // namespace korvant::ui
