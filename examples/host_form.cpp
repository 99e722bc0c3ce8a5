// Property objects from C++: a host fills the form of a pump and the form of a drill hole, listens
// to one property, shows both for editing and reads what became of them.
#include <cstdio>
#include <initializer_list>
#include <string>

#include "korvantide/script_object.h"

namespace {

/// Told when editing has changed the property that it listens to.
class Announcer : public KorStampListener {
  public:
    void propertyChanged(KorStamp& object, const std::string& property) override {
        double value = 0.0;
        object.getProperty(property, &value);
        std::printf("%s is now %g\n", property.c_str(), value);
    }
};

/// Texts of forms are Windows Western bytes or UTF-8; here they are UTF-8.
void addTranslations(ScriptObject& form) {
    struct Text {
        const char *english, *french, *spanish;
    };
    for (const Text& text :
         std::initializer_list<Text>{{"Duty", "Service", "Servicio"},
                                     {"Flow", "Débit", "Caudal"},
                                     {"Head", "Hauteur", "Altura"},
                                     {"Power", "Puissance", "Potencia"},
                                     {"The flow must be positive", "Le débit doit être positif",
                                      "El caudal debe ser positivo"},
                                     {"Collar", "Collet", "Boca"},
                                     {"Intervals", "Intervalles", "Intervalos"},
                                     {"Depth", "Profondeur", "Profundidad"}}) {
        form.addTranslation(1, text.english, text.french);
        form.addTranslation(2, text.english, text.spanish);
    }
}

void fillPump(ScriptObject& pump) {
    pump.setTitle("Pump");
    pump.addClass("Duty", true);
    pump.addCategory("Water");
    pump.addProperty("flow", "Flow", 36.0, "m3/h", true);
    pump.addProperty("head", "Head", 25.0, "m", true);
    pump.addCategory("Motor");
    for (const char* kind : {"Centrifugal", "Submersible", "Diaphragm"}) pump.addOption(kind);
    pump.addOptionProperty("kind", "Kind of pump", 0, true);
    pump.addProperty("stages", "Stages", 1, "", true);
    pump.addProperty("efficiency", "Efficiency", 70, "%", true);
    pump.addProperty("power", "Power", 0.0, "kW", false);
    pump.addProperty("fixed", "Fixed speed", true, true, 0);
    pump.addProperty("variable", "Variable speed", false, true, 0);
    pump.addClass("Report", true);
    pump.addProperty("site", "Site", "North pit", true, false);
    pump.addProperty("colour", "Colour of the curve", 255, "color", true);
    pump.addProperty("curve", "Pump curve", "", "Text files|*.txt;*.csv|All files|*", true, true);

    pump.addHint("flow", "Measured at the outlet");
    pump.addErrorConstraint("flow", "flow>0", "The flow must be positive");
    pump.addErrorConstraint("efficiency", "efficiency>=10&&efficiency<=95",
                            "The efficiency lies between 10 and 95 %");
    pump.addWarningConstraint("head", "head<=100", "Consider more stages");
    pump.addEnableConstraint("stages", "kind<>2");
    pump.addComputation("power", "9.81*flow/3.6*head/(efficiency*10)");
}

void addInterval(ScriptObject& hole, const ScriptObject& layout, double from, double to) {
    ScriptObject interval(layout);
    interval.setProperty("from", from);
    interval.setProperty("to", to);
    hole.addGroupElement(interval);
}

void fillDrillHole(ScriptObject& hole) {
    ScriptObject layout;
    layout.addProperty("note", "Note", "", true, false);
    layout.addProperty("from", "From", 0.0, "m", true);
    layout.addProperty("to", "To", 1.0, "m", true);
    layout.addErrorConstraint("to", "to>from", "The interval ends before it begins");
    hole.setTitle("Drill hole");
    hole.addClass("Collar", true);
    hole.addProperty("name", "Name", "DH-1", true, false);
    hole.addProperty("depth", "Depth", 20.0, "m", true);
    hole.addClass("Intervals", true);
    hole.addGroup("Intervals", layout, true, true, true, true);
    addInterval(hole, layout, 0, 4);
    addInterval(hole, layout, 4, 20);
}

void print(ScriptObject& form) {
    std::printf("%s:", form.getTitle().c_str());
    for (int i = 0; i < form.getPropertiesCount(); ++i)
        std::printf(" %s", form.getPropertyName(i).c_str());
    std::printf("\n");
}

}  // namespace

int main() {
    // The listener stands first: it must outlive the objects.
    Announcer announcer;
    ScriptObject pump, hole;
    fillPump(pump);
    fillDrillHole(hole);
    pump.addListener("flow", &announcer);
    for (ScriptObject* const form : {&pump, &hole}) {
        addTranslations(*form);
        print(*form);
        std::printf("%s\n", form->edit() ? "confirmed" : "cancelled");
    }
    std::printf("%d intervals\n", hole.getGroupSize("Intervals"));
    return 0;
}
