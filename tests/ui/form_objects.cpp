#include "form_objects.h"

namespace korvant::test {
namespace {

struct Word {
    const char* english;
    const char* french;
    const char* spanish;
};

constexpr Word kWords[] = {
    {"Pump", "Pompe", "Bomba"},
    {"Results", "R\303\251sultats", "Resultados"},
    {"Identification", "Identification", "Identificaci\303\263n"},
    {"Operation", "Fonctionnement", "Funcionamiento"},
    {"Power", "Puissance", "Potencia"},
    {"Name of the pump", "Nom de la pompe", "Nombre de la bomba"},
    {"Remarks", "Remarques", "Observaciones"},
    {"Curve file", "Fichier de la courbe", "Archivo de la curva"},
    {"Report file", "Fichier du rapport", "Archivo del informe"},
    {"Colour in drawings", "Couleur sur les plans", "Color en los planos"},
    {"Flow rate", "D\303\251bit", "Caudal"},
    {"Head", "Hauteur manom\303\251trique", "Altura"},
    {"Efficiency", "Rendement", "Rendimiento"},
    {"Speed", "Vitesse de rotation", "Velocidad de giro"},
    {"Liquid", "Liquide", "L\303\255quido"},
    {"Temperature", "Temp\303\251rature", "Temperatura"},
    {"Variable speed drive", "Variateur de vitesse", "Variador de velocidad"},
    {"Lowest speed", "Vitesse minimale", "Velocidad m\303\255nima"},
    {"Horizontal", "Horizontale", "Horizontal"},
    {"Vertical", "Verticale", "Vertical"},
    {"Water", "Eau", "Agua"},
    {"Oil", "Huile", "Aceite"},
    {"Slurry", "Boue", "Lodo"},
    {"The flow rate must be above 0.", "Le d\303\251bit doit \303\252tre positif.",
     "El caudal debe ser positivo."},
    {"Above 3000 rpm the bearings wear quickly.",
     "Au-del\303\240 de 3000 tr/min les paliers s'usent vite.",
     "Por encima de 3000 rpm los cojinetes se desgastan pronto."},
    {"Hydraulic power", "Puissance hydraulique", "Potencia hidr\303\241ulica"},
    {"Shaft power", "Puissance \303\240 l'arbre", "Potencia en el eje"},
    {"Serial number", "Num\303\251ro de s\303\251rie", "N\303\272mero de serie"},
    {"Motor is too small for this power.", "Le moteur est trop petit pour cette puissance.",
     "El motor es demasiado peque\303\261o para esta potencia."},
    {"Rated motor power", "Puissance nominale du moteur", "Potencia nominal del motor"},
    {"The volume that passes in an hour, at the <b>duty point</b>. It is what the pipe design asks "
     "for.",
     "Le volume qui passe en une heure, au <b>point de fonctionnement</b>. C'est ce que demande "
     "le r\303\251seau.",
     "El volumen que pasa en una hora, en el <b>punto de trabajo</b>. Es lo que pide la "
     "tuber\303\255a."},
    {"Hole", "Forage", "Sondeo"},
    {"Layers", "Couches", "Capas"},
    {"Driller", "Foreur", "Perforista"},
    {"Depth", "Profondeur", "Profundidad"},
    {"Rock", "Roche", "Roca"},
    {"Top", "Toit", "Techo"},
    {"Bottom", "Mur", "Muro"},
    {"The bottom must be below the top.", "Le mur doit \303\252tre sous le toit.",
     "El muro debe estar debajo del techo."},
};

void translateInto(ScriptObject& object) {
    for (const Word& word : kWords) {
        object.addTranslation(1, word.english, word.french);
        object.addTranslation(2, word.english, word.spanish);
    }
}

void addPumpProperties(ScriptObject& object) {
    object.addClass("Pump", true);
    object.addCategory("Identification");
    object.addProperty("name", "Name of the pump", "P-101 A", true, false);
    object.addProperty("serial", "Serial number", "KX-2291-07", false, false);
    object.addProperty("remarks", "Remarks", "Stand-by unit.\nSpare impeller in store.", true,
                       true);
    object.addProperty("curve", "Curve file", "/data/curves/p101.csv",
                       "Curves|*.csv;*.txt|All files|*", true, true);
    object.addProperty("report", "Report file", "", "*.html", false, true);
    object.addProperty("shade", "Colour in drawings", 0x00B4731E, "color", true);
    object.addCategory("Operation");
    object.addProperty("flow", "Flow rate", 120.5, "m3/h", true);
    object.addProperty("head", "Head", 32.0, "m", true);
    object.addProperty("efficiency", "Efficiency", 71, "%", true);
    object.addProperty("speed", "Speed", 3450, "rpm", true);
    object.addOption("Water");
    object.addOption("Oil");
    object.addOption("Slurry");
    object.addOptionProperty("liquid", "Liquid", 0, true);
    object.addProperty("temperature", "Temperature", 18.0F, "\302\260C", true);
    object.addProperty("drive", "Variable speed drive", false, true, -1L);
    object.addProperty("lowest", "Lowest speed", 900, "rpm", true);
    object.addProperty("horizontal", "Horizontal", true, true, 1L);
    object.addProperty("vertical", "Vertical", false, true, 1L);
}

void addPumpResults(ScriptObject& object) {
    object.addClass("Results", true);
    object.addCategory("Power");
    object.addProperty("hydraulic", "Hydraulic power", 0.0, "kW", false);
    object.addProperty("shaft", "Shaft power", 0.0, "kW", false);
    object.addProperty("motor", "Rated motor power", 11.0, "kW", true);
}

void addPumpRules(ScriptObject& object) {
    object.addComputation("hydraulic", "flow*head*9.81/3600");
    object.addComputation("shaft", "hydraulic/(efficiency/100)");
    object.addErrorConstraint("flow", "flow>0", "The flow rate must be above 0.");
    object.addWarningConstraint("speed", "speed<=3000",
                                "Above 3000 rpm the bearings wear quickly.");
    object.addErrorConstraint("motor", "motor>=shaft", "Motor is too small for this power.");
    object.addEnableConstraint("lowest", "drive");
    object.addHint("flow", kWords[30].english);
}

}  // namespace

void makePump(ScriptObject& object) {
    object.setTitle("Pump sizing");
    addPumpProperties(object);
    addPumpResults(object);
    addPumpRules(object);
    translateInto(object);
}

void makeDrillHole(ScriptObject& object) {
    object.setTitle("Drill hole");
    object.addClass("Hole", true);
    object.addProperty("driller", "Driller", "N. Prado", true, false);
    object.addProperty("depth", "Depth", 48.5, "m", true);
    object.addClass("Layers", true);
    ScriptObject layer;
    layer.addOption("Sand");
    layer.addOption("Clay");
    layer.addOption("Limestone");
    layer.addProperty("layer", "Name", "", true, false);
    layer.addOptionProperty("rock", "Rock", 0, true);
    layer.addProperty("top", "Top", 0.0, "m", true);
    layer.addProperty("bottom", "Bottom", 1.0, "m", true);
    layer.addErrorConstraint("bottom", "bottom>top", "The bottom must be below the top.");
    object.addGroup("Layers", layer, true, true, true, true);
    const char* names[] = {"Fill", "Grey clay", "Karst"};
    for (int i = 0; i < 3; ++i) {
        layer.setProperty("layer", names[i]);
        layer.setProperty("rock", i);
        layer.setProperty("top", i * 10.0);
        layer.setProperty("bottom", i * 10.0 + 10.0);
        object.addGroupElement(layer);
    }
    translateInto(object);
}

void makeLarge(ScriptObject& object, int count) {
    object.setTitle("Large");
    for (int i = 0; i < count; ++i) {
        const std::string name = "p" + std::to_string(i);
        if (i % 100 == 0) object.addCategory("Part " + std::to_string(i / 100));
        object.addProperty(name, "Property " + std::to_string(i), i * 0.5, "m", true);
        object.addErrorConstraint(name, name + ">=0", "Negative");
        if (i % 10 == 9) object.addComputation(name, "p" + std::to_string(i - 1) + "*2");
    }
}

double realOf(ScriptObject& object, const std::string& name) {
    double value = 0;
    object.getProperty(name, &value);
    return value;
}

int integerOf(ScriptObject& object, const std::string& name) {
    int value = 0;
    object.getProperty(name, &value);
    return value;
}

bool booleanOf(ScriptObject& object, const std::string& name) {
    bool value = false;
    object.getProperty(name, &value);
    return value;
}

std::string textOf(ScriptObject& object, const std::string& name) {
    std::string value;
    object.getProperty(name, &value);
    return value;
}

}  // namespace korvant::test
