// Calls every method of Object, and prints what comes back.
void say(string what, string value) { Print(what + ": " + value + "\n"); }
void say(string what, bool value) { Print(what + ": " + (value ? "true" : "false") + "\n"); }

int main()
{
    Object pump;
    pump.setTitle("Pump");
    string title = pump.getTitle();
    say("title", title);

    pump.addClass("Basics", true);
    pump.addCategory("Place");
    say("text", pump.addProperty("site", "Site", "North pit", true));
    say("text twice", pump.addProperty("site", "Again", "x", true));
    say("file", pump.addProperty("log", "Log", "a.txt", "Text|*.txt", true, true));
    pump.addCategory("Size");
    say("integer", pump.addProperty("stages", "Stages", 2, "", true));
    say("double", pump.addProperty("flow", "Flow", 12.5, "m3/h", true));
    say("float", pump.addProperty("grade", "Grade", 0.5f, "g/t", false));
    pump.addOption("one");
    pump.addOption("two");
    say("options", pump.addOptionProperty("kind", "Kind", 1, true));
    say("boolean", pump.addProperty("auto", "Automatic", true, true));
    say("radio", pump.addProperty("metric", "Metric", false, true, 1));

    pump.addErrorConstraint("flow", "flow>0", "No flow");
    pump.addWarningConstraint("flow", "flow<100", "Much flow");
    pump.addEnableConstraint("stages", "auto");
    pump.addHint("flow", "At the outlet");
    pump.addComputation("grade", "flow*2");

    Object interval;
    interval.addProperty("from", "From", 0.0, "m", true);
    pump.addClass("Intervals", true);
    pump.addGroup("Intervals", interval, true, true, true, true);
    say("current", "" + pump.getGroupElement("Intervals"));
    say("element", pump.addGroupElement(interval));
    say("current", "" + pump.getGroupElement("Intervals"));
    pump.setGroupElement("Intervals", 5);
    say("current", "" + pump.getGroupElement("Intervals"));
    pump.setGroupElement("Intervals", 0);

    say("count", "" + pump.getPropertiesCount());
    for (int i = -1; i <= pump.getPropertiesCount(); i++) {
        string name;
        pump.getPropertyName(i, name);
        Print("  " + i + " " + name + " " + pump.getPropertyType(i) + "\n");
    }
    say("type", "" + pump.getPropertyTypeByName("flow"));
    say("type", "" + pump.getPropertyTypeByName("nothing"));

    pump.resetIterators();
    string name;
    bool editable;
    int index;
    while (pump.getNextClass(name, editable)) {
        Print("class " + name + "\n");
        while (pump.getNextCategory(name)) {
            Print(" category " + name + "\n");
            while (pump.getNextProperty(name, index)) Print("  " + index + " " + name + "\n");
        }
    }

    string text; int whole; double real; float single; bool flag;
    say("set text", pump.setProperty("site", "South pit"));
    say("set integer", pump.setProperty("stages", 3));
    say("set double", pump.setProperty("flow", 20.25));
    say("set float", pump.setProperty("grade", 0.25f));
    say("set boolean", pump.setProperty("auto", false));
    say("set nothing", pump.setProperty("nothing", 1));
    pump.getProperty("site", text); say("text", text);
    pump.getProperty("stages", whole); say("integer", "" + whole);
    pump.getProperty("flow", real); say("double", "" + real);
    pump.getProperty("grade", single); say("float", "" + single);
    pump.getProperty("auto", flag); say("boolean", flag);
    whole = 99;
    say("unknown", pump.getProperty("nothing", whole));
    say("left", "" + whole);

    Object copy(pump);
    Object merged;
    say("append", merged.append(pump));
    say("merged", "" + merged.getPropertiesCount() + " of " + copy.getPropertiesCount());

    pump.addTranslation(1, "Save?", "Enregistrer ?");
    pump.setLocale(1);
    say("locale", "" + pump.getLocale());
    int answer = pump.messageBox("Pump", "Save?", "BU_YES_NO", "IC_QUESTION");
    say("yes", answer == pump.VAL("ID_YES"));
    answer = pump.messageBox("Pump", "Save?", "BU_OK", "IC_WARNING", "all of it");
    say("ok", answer == pump.VAL("ID_OK"));
    say("no constant", "" + pump.VAL("bu_ok"));
    say("prompt", "" + pump.prompt("Holes", 3));
    say("prompt", "" + pump.prompt("Depth", 2.5));
    say("prompt", pump.prompt("Name", "x"));
    say("edit", pump.edit());

    pump.clear();
    say("cleared", "" + pump.getPropertiesCount());
    say("copy", "" + copy.getPropertiesCount());
    return 0;
}
