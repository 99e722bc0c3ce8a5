#include "object/form/form_texts.h"

#include <iterator>

#include "korvantide/script_object.h"

namespace korvant {

namespace {

/// One text in the three languages, in Windows Western bytes (octal where they are not ASCII).
struct Translated {
    const char* english;
    const char* french;
    const char* spanish;
};

/// Deliberate: a locale above 2 reads English, and so does a negative one; scripts may set any.
const char* inLanguage(const Translated& text, std::int32_t locale) {
    if (locale == 1) return text.french;
    return locale == 2 ? text.spanish : text.english;
}

/// In the order of FormText.
constexpr Translated kTexts[] = {
    {"", "", ""},
    {"OK", "OK", "Autorizaci\363n"},
    {"Cancel", "Annuler", "Cancelaci\363n"},
    {"Check", "V\351rifier", "Comprobar"},
    {"No errors or warnings", "Aucune erreur ni avertissement", "No hay errores ni advertencias"},
    {"Errors", "Erreurs", "Errores"},
    {"Warnings", "Avertissements", "Advertencias"},
    {"Add", "Ajouter", "A\361adir"},
    {"Copy", "Copier", "Copiar"},
    {"Remove", "Supprimer", "Quitar"},
    {"Order...", "Ordonner...", "Ordenar..."},
    {"Element", "\311l\351ment", "Elemento"},
    {"This group has no element yet. Press Add to make one.",
     "Ce groupe n'a pas encore d'\351l\351ment. Appuyez sur Ajouter pour en cr\351er un.",
     "Este grupo no tiene todav\355a ning\372n elemento. Pulse A\361adir para crear uno."},
    {"This group has no element.", "Ce groupe n'a pas d'\351l\351ment.",
     "Este grupo no tiene ning\372n elemento."},
    {"No element is chosen.", "Aucun \351l\351ment n'est choisi.",
     "No se ha elegido ning\372n elemento."},
    {"needs an element first.", "a d'abord besoin d'un \351l\351ment.",
     "necesita primero un elemento."},
    {"First", "Premier", "Primero"},
    {"Last", "Dernier", "\332ltimo"},
    {"Up", "Monter", "Subir"},
    {"Down", "Descendre", "Bajar"},
    {"Undo", "D\351faire", "Deshacer"},
    {"Redo", "Refaire", "Rehacer"},
    {"Reset", "R\351tablir", "Restablecer"},
    {"Search", "Rechercher", "Buscar"},
    {"Property", "Propri\351t\351", "Propiedad"},
    {"Value", "Valeur", "Valor"},
    {"Unit", "Unit\351", "Unidad"},
    {"Choose a file", "Choisir un fichier", "Elegir un archivo"},
    {"Choose a colour", "Choisir une couleur", "Elegir un color"},
    {"All files", "Tous les fichiers", "Todos los archivos"},
    {"Yes", "Oui", "S\355"},
    {"No", "Non", "No"},
    {"Not available unless:", "Disponible seulement si :", "Disponible solo si:"},
    {"This value cannot be edited here.", "Cette valeur ne peut pas \352tre modifi\351e ici.",
     "Este valor no se puede modificar aqu\355."},
    {"The values of this page cannot be edited.",
     "Les valeurs de cette page ne peuvent pas \352tre modifi\351es.",
     "Los valores de esta p\341gina no se pueden modificar."},
    {"A number is needed here.", "Il faut un nombre ici.", "Aqu\355 se necesita un n\372mero."},
    {"This is not a finite number.", "Ce n'est pas un nombre fini.", "No es un n\372mero finito."},
    {"A whole number is needed here.", "Il faut un nombre entier ici.",
     "Aqu\355 se necesita un n\372mero entero."},
    {"Whole numbers go from -2147483648 to 2147483647.",
     "Les nombres entiers vont de -2147483648 \340 2147483647.",
     "Los n\372meros enteros van de -2147483648 a 2147483647."},
    {"This is none of the options.", "Ce n'est aucune des options.",
     "No es ninguna de las opciones."},
    {"A colour is needed here: #RRGGBB, \"red, green, blue\" or a number.",
     "Il faut une couleur ici : #RRGGBB, \253 rouge, vert, bleu \273 ou un nombre.",
     "Aqu\355 se necesita un color: #RRGGBB, \253rojo, verde, azul\273 o un n\372mero."},
    {"Yes or no is needed here.", "Il faut oui ou non ici.", "Aqu\355 se necesita s\355 o no."},
    {"A line has at most 30,000 characters here.", "Une ligne a ici 30 000 caract\350res au plus.",
     "Aqu\355 una l\355nea tiene 30.000 caracteres como m\341ximo."},
    {"The file exists. Overwrite it?", "Le fichier existe. L'\351craser ?",
     "El archivo existe. \277Sobrescribirlo?"},
    {"Stop the script", "Arr\352ter le script", "Detener el script"},
    {"The form has changes. Keep them?",
     "Le formulaire a \351t\351 modifi\351. Garder les modifications ?",
     "El formulario tiene cambios. \277Conservarlos?"},
    {"Also found on:", "Trouv\351 aussi dans :", "Tambi\351n en:"},
    {"Nothing found.", "Rien n'a \351t\351 trouv\351.", "No se ha encontrado nada."},
    {"To be looked at:", "\300 v\351rifier :", "Por revisar:"},
};
static_assert(std::size(kTexts) == static_cast<std::size_t>(FormText::count_));

struct ButtonCaption {
    unsigned long button;
    Translated caption;
};

/// Deliberate: the Spanish caption of OK is no word for OK; hosts and manuals show it so.
constexpr ButtonCaption kButtons[] = {
    {1, {"OK", "OK", "Autorizaci\363n"}},
    {2, {"Cancel", "Annuler", "Cancelaci\363n"}},
    {3, {"Abort", "Arr\352t", "Paro"}},
    {4, {"Retry", "R\351essayer", "Recomprobaci\363n"}},
    {5, {"Ignore", "Ignorer", "Ignorar"}},
    {6, {"Yes", "Oui", "S\355"}},
    {7, {"No", "Non", "No"}},
    {9, {"Help", "Aide", "Ayuda"}},
    {10, {"Try again", "Essayer encore", "Intentar a\372n"}},
    {11, {"Continue", "Continuer", "Contin\372e"}},
    {14, {"Skip", "Sauter", "Salto"}},
    {15, {"Skip all", "Sauter tout", "Saltar todo"}},
    {16, {"Ignore all", "Ignorer tout", "Ignorar todo"}},
    {19, {"Yes to all", "Oui pour tous", "S\355 para todos"}},
    {20, {"No to all", "Non pour tous", "No para todos"}},
    {21, {"Report", "Rapport", "Informe"}},
    {30, {"More >>", "En detail >>", "M\341s informaci\363n >>"}},
    {31, {"<< More", "<< En detail", "<< M\341s informaci\363n"}},
    {0x1000000, {"Do not show again", "Ne plus afficher ce message", "No muestre otra vez"}},
};

constexpr Translated kErrors = {"There are errors", "Il y a des erreurs", "Hay errores"};
constexpr Translated kError = {"There is an error", "Il y a une erreur", "Hay un error"};
constexpr Translated kWarnings = {"There are warnings", "Il y a des avertissements",
                                  "Hay advertencias"};
constexpr Translated kWarning = {"There is a warning", "Il y a un avertissement",
                                 "Hay una advertencia"};

}  // namespace

std::string formText(FormText text, std::int32_t locale) {
    const auto index = static_cast<std::size_t>(text);
    return index < std::size(kTexts) ? inLanguage(kTexts[index], locale) : "";
}

std::string formText(FormText text) {
    return formText(text, ScriptObject::m_locale);
}

std::string defaultCategoryCaption(std::int32_t locale) {
    return locale == 1 ? "G\351n\351ral" : "General";
}

std::string errorSummary(bool several, std::int32_t locale) {
    return inLanguage(several ? kErrors : kError, locale);
}

std::string warningSummary(bool several, std::int32_t locale) {
    return inLanguage(several ? kWarnings : kWarning, locale);
}

void addButtonCaptions(std::map<unsigned long, const char*>& captions, std::int32_t locale) {
    if (locale < 0) return;
    for (const ButtonCaption& one : kButtons)
        captions.emplace(one.button, inLanguage(one.caption, locale));
}

}  // namespace korvant
