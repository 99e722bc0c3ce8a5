#include "ui/kit/window_words.h"

#include <algorithm>
#include <string_view>

#include "korvantide/script_object.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

constexpr WindowWords kWords[] = {
    {" in ", " dans ", " en "},
    {" of %s allowed", " sur %s autorisées", " de %s permitidos"},
    {"%d of %d", "%d sur %d", "%d de %d"},
    {"%llu more", "%llu de plus", "%llu más"},
    {", line %d", ", ligne %d", ", línea %d"},
    {". F5 lets the script end.", ". F5 laisse finir le script.", ". F5 deja terminar el script."},
    {"A script is written on the left, run, and", "Un script s'écrit à gauche, s'exécute et",
     "Un script se escribe a la izquierda, se"},
    {"Add an expression", "Ajouter une expression", "Añadir una expresión"},
    {"Add an expression...", "Ajouter une expression...", "Añadir una expresión..."},
    {"Bottom panes", "Volets du bas", "Paneles inferiores"},
    {"Breakpoint at line %d", "Point d'arrêt à la ligne %d", "Punto de parada en la línea %d"},
    {"Breakpoints", "Points d'arrêt", "Puntos de parada"},
    {"Call stack", "Pile d'appels", "Pila de llamadas"},
    {"Check", "Vérifier", "Comprobar"},
    {"Check (Build)", "Vérifier (Build)", "Comprobar (Build)"},
    {"Check without running", "Vérifier sans exécuter", "Comprobar sin ejecutar"},
    {"Click beside a line number to stop there.",
     "Cliquez à côté d'un numéro de ligne pour y arrêter.",
     "Haga clic junto a un número de línea para parar ahí."},
    {"Click beside a line number, then run.", "Cliquez près d'un numéro de ligne, puis exécutez.",
     "Haga clic junto a un número y ejecute."},
    {"Close", "Fermer", "Cerrar"},
    {"Close, Esc", "Fermer, Échap", "Cerrar, Esc"},
    {"Console", "Console", "Consola"},
    {"Continue", "Continuer", "Continuar"},
    {"Continue (Execute)", "Continuer (Execute)", "Continuar (Execute)"},
    {"Copy", "Copier", "Copiar"},
    {"Debug panel", "Volet de débogage", "Panel de depuración"},
    {"Delete", "Supprimer", "Eliminar"},
    {"Delete all breakpoints", "Supprimer tous les points d'arrêt",
     "Eliminar todos los puntos de parada"},
    {"Do not stop here again", "Ne plus arrêter ici", "No parar más aquí"},
    {"Done", "Terminé", "Listo"},
    {"Empty", "Vider", "Vaciar"},
    {"Errors are listed with their lines.", "Les erreurs sont listées avec leurs lignes.",
     "Los errores se listan con sus líneas."},
    {"F8 goes to the next", "F8 va au suivant", "F8 va al siguiente"},
    {"Find", "Rechercher", "Buscar"},
    {"Go on step by step", "Continuer pas à pas", "Continuar paso a paso"},
    {"Help", "Aide", "Ayuda"},
    {"Last Output", "Dernière sortie", "Última salida"},
    {"Line %d, column %d", "Ligne %d, colonne %d", "Línea %d, columna %d"},
    {"Mark all", "Tout marquer", "Marcar todo"},
    {"Match case", "Respecter la casse", "Distinguir mayúsculas"},
    {"More examples...", "Autres exemples...", "Más ejemplos..."},
    {"New", "Nouveau", "Nuevo"},
    {"New script", "Nouveau script", "Nuevo script"},
    {"Next match, F3", "Suivant, F3", "Siguiente, F3"},
    {"No match", "Aucun résultat", "Sin resultados"},
    {"No problems found", "Aucun problème trouvé", "Ningún problema"},
    {"No problems found.", "Aucun problème trouvé.", "Ningún problema."},
    {"Nothing printed yet.", "Rien n'a encore été imprimé.", "Todavía no se ha impreso nada."},
    {"Only in the selection", "Dans la sélection seulement", "Solo en la selección"},
    {"Only print", "Imprimer seulement", "Solo imprimir"},
    {"Open", "Ouvrir", "Abrir"},
    {"Open a script...", "Ouvrir un script...", "Abrir un script..."},
    {"Outline", "Plan", "Esquema"},
    {"Output", "Sortie", "Salida"},
    {"Pause", "Pause", "Pausa"},
    {"Paused at line %d", "En pause à la ligne %d", "En pausa en la línea %d"},
    {"Previous match, Shift+F3", "Précédent, Maj+F3", "Anterior, Mayús+F3"},
    {"Problems", "Problèmes", "Problemas"},
    {"Ready", "Prêt", "Listo para empezar"},
    {"Redo", "Rétablir", "Rehacer"},
    {"Regular expression", "Expression régulière", "Expresión regular"},
    {"Remove all expressions", "Retirer toutes les expressions", "Quitar todas las expresiones"},
    {"Replace", "Remplacer", "Reemplazar"},
    {"Replace all", "Tout remplacer", "Reemplazar todo"},
    {"Replace all %d", "Remplacer les %d", "Reemplazar los %d"},
    {"Replace with", "Remplacer par", "Reemplazar con"},
    {"Restart", "Redémarrer", "Reiniciar"},
    {"Restart, Ctrl+Shift+F5", "Redémarrer, Ctrl+Maj+F5", "Reiniciar, Ctrl+Mayús+F5"},
    {"Run", "Exécuter", "Ejecutar"},
    {"Run (Execute)", "Exécuter (Execute)", "Ejecutar (Execute)"},
    {"Run it", "Exécutez-le", "Ejecútelo"},
    {"Running", "En cours", "En ejecución"},
    {"Running: waits for what you type", "En cours : attend votre saisie",
     "En ejecución: espera lo que escriba"},
    {"Save", "Enregistrer", "Guardar"},
    {"Scripting manual", "Manuel des scripts", "Manual de scripts"},
    {"Show this when the editor starts", "Afficher au démarrage de l'éditeur",
     "Mostrar al abrir el editor"},
    {"Stack", "Pile", "Pila"},
    {"Start", "Commencer", "Empezar"},
    {"Step into", "Entrer", "Entrar"},
    {"Step into, F12", "Pas à pas entrant, F12", "Entrar, F12"},
    {"Step out", "Sortir", "Salir"},
    {"Step out, Shift+F11", "Pas à pas sortant, Maj+F11", "Salir, Mayús+F11"},
    {"Step over", "Pas suivant", "Paso siguiente"},
    {"Step over, F11", "Pas suivant, F11", "Paso siguiente, F11"},
    {"Stop", "Arrêter", "Parar"},
    {"Stop after", "Arrêter après", "Parar tras"},
    {"Stop at a line", "Arrêter à une ligne", "Parar en una línea"},
    {"Stop every time", "Arrêter chaque fois", "Parar siempre"},
    {"Stop when", "Arrêter quand", "Parar cuando"},
    {"Stopped at line %d", "Arrêté à la ligne %d", "Parado en la línea %d"},
    {"Stopped: ", "Arrêté : ", "Parado: "},
    {"Switch all on or off", "Tout activer ou désactiver", "Activar o desactivar todos"},
    {"Switched on", "Activé", "Activado"},
    {"The script on the left is a tour. It reads drill",
     "Le script à gauche est une visite. Il lit des",
     "El script de la izquierda es un recorrido. Lee"},
    {"The table appears in the Console.", "Le tableau apparaît dans la Console.",
     "La tabla aparece en la Consola."},
    {"The text has changed since the run began", "Le texte a changé depuis le début de l'exécution",
     "El texto ha cambiado desde el inicio"},
    {"The variables show at the right.", "Les variables s'affichent à droite.",
     "Las variables se ven a la derecha."},
    {"Toolbar", "Barre d'outils", "Barra de herramientas"},
    {"Undo", "Annuler", "Deshacer"},
    {"Variables", "Variables", "Variables"},
    {"Watches", "Expressions", "Expresiones"},
    {"Welcome", "Bienvenue", "Bienvenida"},
    {"What does this mean?", "Qu'est-ce que cela veut dire ?", "¿Qué significa esto?"},
    {"What it prints appears in the Console.", "Ce qu'il imprime apparaît dans la Console.",
     "Lo que imprime aparece en la Consola."},
    {"What the editor and the debugger report", "Ce que disent l'éditeur et le débogueur",
     "Lo que dicen el editor y el depurador"},
    {"Whole words", "Mots entiers", "Palabras completas"},
    {"first again", "de nouveau le premier", "otra vez el primero"},
    {"line %d", "ligne %d", "línea %d"},
    {"looked into while it stands still.", "s'examine pendant qu'il est arrêté.",
     "ejecuta y se examina mientras está parado."},
    {"no code on this line", "pas de code sur cette ligne", "sin código en esta línea"},
    {"not known in this function", "inconnu dans cette fonction", "desconocido en esta función"},
    {"passes", "passages", "pasadas"},
    {"samples and prints a table.", "échantillons et imprime un tableau.",
     "muestras e imprime una tabla."},
    {"switched off", "désactivé", "desactivado"},
    {"was ", "était ", "era "},
    {"when ", "quand ", "cuando "},
};

}  // namespace

std::span<const WindowWords> windowWords() {
    return kWords;
}

wxString words(const char* english) {
    const auto* const found = std::lower_bound(
        std::begin(kWords), std::end(kWords), std::string_view(english),
        [](const WindowWords& row, std::string_view wanted) { return row.english < wanted; });
    if (found == std::end(kWords) || std::string_view(found->english) != english)
        return fromUtf8(english);
    switch (ScriptObject::m_locale) {
        case 1:
            return fromUtf8(found->french);
        case 2:
            return fromUtf8(found->spanish);
        default:
            return fromUtf8(english);
    }
}

}  // namespace korvant::ui
