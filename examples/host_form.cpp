// A host fills a property object of its own, listens to it, and shows it for editing.
#include <cstdio>

#include "korvantide/script_object.h"

namespace {

class Announcer : public KorStampListener {
  public:
    void propertyChanged(KorStamp& object, const std::string& property) override {
        double value = 0.0;
        object.getProperty(property, &value);
        std::printf("%s is now %g\n", property.c_str(), value);
    }
};

}  // namespace

int main() {
    // The listener stands first: it must outlive the object.
    Announcer announcer;
    ScriptObject pump;
    pump.setTitle("Pump");
    pump.addClass("Duty", true);
    pump.addCategory("Water");
    pump.addProperty("flow", "Flow", 36.0, "m3/h", true);
    pump.addProperty("head", "Head", 25.0, "m", true);
    pump.addProperty("power", "Power", 0.0, "kW", false);
    pump.addErrorConstraint("flow", "flow>0", "The flow must be positive");
    pump.addComputation("power", "flow*head*9.81/3600");
    pump.addTranslation(1, "Flow", "D\351bit");
    pump.addListener("flow", &announcer);

    std::string name;
    int index = 0;
    bool editable = false;
    pump.resetIterators();
    while (pump.getNextClass(&name, &editable))
        while (pump.getNextCategory(&name))
            while (pump.getNextProperty(&name, &index)) std::printf("%d %s\n", index, name.c_str());
    std::printf("%s\n", pump.edit() ? "confirmed" : "cancelled");
    return 0;
}
