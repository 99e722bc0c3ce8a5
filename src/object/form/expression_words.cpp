#include "object/form/expression_words.h"

namespace korvant {

namespace {

/// A part of a message between what it quotes; Windows Western, octal where it is not ASCII.
struct Phrase {
    std::string_view english;
    std::string_view french;
    std::string_view spanish;
};

constexpr Phrase kPhrases[] = {
    {"Empty expression.", "L'expression est vide.", "La expresi\363n est\341 vac\355a."},
    {"Expression too long.", "L'expression est trop longue.",
     "La expresi\363n es demasiado larga."},
    {"Expression too deep.", "L'expression a trop de niveaux.",
     "La expresi\363n tiene demasiados niveles."},
    {"Division by zero.", "Division par z\351ro.", "Divisi\363n por cero."},
    {"Syntax error in expression.", "Erreur de syntaxe dans l'expression.",
     "Error de sintaxis en la expresi\363n."},
    {"Syntax error in expression: ", "Erreur de syntaxe dans l'expression : ",
     "Error de sintaxis en la expresi\363n: "},
    {"Bad parenthesed expression: ", "Parenth\350ses incorrectes : ",
     "Par\351ntesis incorrectos: "},
    {"Unknow identifier: ", "Nom inconnu : ", "Nombre desconocido: "},
    {"Syntax error in function ", "Erreur de syntaxe, fonction ", "Error de sintaxis, funci\363n "},
    {" parameters ", ", param\350tre ", ", par\341metro "},
    {" parameters", ", param\350tres", ", par\341metros"},
    {"Odd number of parameters in function ", "Nombre impair de param\350tres, fonction ",
     "N\372mero impar de par\341metros, funci\363n "},
    {"Even number of parameters in function ", "Nombre pair de param\350tres, fonction ",
     "N\372mero par de par\341metros, funci\363n "},
    {"Unknow function ", "Fonction inconnue ", "Funci\363n desconocida "},
};

constexpr std::string_view kNewPart = ":\n\t";
constexpr std::string_view kWith = " with ";

std::string_view translated(const Phrase& phrase, std::int32_t locale) {
    return locale == 1 ? phrase.french : phrase.spanish;
}

/// " with 3 parameters"
std::string countInLanguage(std::string_view text, std::int32_t locale) {
    const std::string count(text.substr(kWith.size(), text.rfind(' ') - kWith.size()));
    const bool several = count != "1";
    if (locale == 1) return " avec " + count + (several ? " param\350tres" : " param\350tre");
    return " con " + count + (several ? " par\341metros" : " par\341metro");
}

std::string inLanguage(std::string_view text, std::int32_t locale) {
    for (const Phrase& phrase : kPhrases)
        if (phrase.english == text) return std::string(translated(phrase, locale));
    if (text.substr(0, kWith.size()) == kWith) return countInLanguage(text, locale);
    // The message of an outer call goes on with that of the inner one.
    if (text.size() > kNewPart.size() && text.substr(0, kNewPart.size()) == kNewPart)
        return (locale == 1 ? " :\n\t" : ":\n\t") +
               inLanguage(text.substr(kNewPart.size()), locale);
    return std::string(text);
}

}  // namespace

std::string expressionMessage(std::string_view english, std::int32_t locale) {
    if (locale != 1 && locale != 2) return std::string(english);
    std::string message;
    bool quoted = false;
    while (true) {
        const std::size_t quote = english.find('"');
        const std::string_view part = english.substr(0, quote);
        message += quoted ? std::string(part) : inLanguage(part, locale);
        if (quote == std::string_view::npos) return message;
        message += '"';
        quoted = !quoted;
        english.remove_prefix(quote + 1);
    }
}

}  // namespace korvant
