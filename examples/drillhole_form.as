// A form for a drill hole: a page for the collar and a group of intervals, each with a depth, a
// rock and a grade. Every interval is checked when the form is confirmed.
// Without a window to fill it in the form is cancelled, and the script says so.

void addInterval(Object &form, Object &layout, double from, double to, int rock, double grade)
{
    Object interval(layout);
    interval.setProperty("from", from);
    interval.setProperty("to", to);
    interval.setProperty("rock", rock);
    interval.setProperty("grade", grade);
    form.addGroupElement(interval);
}

int main()
{
    Object layout;
    layout.addProperty("note", "Note", "", true);
    layout.addProperty("from", "From", 0.0, "m", true);
    layout.addProperty("to", "To", 1.0, "m", true);
    layout.addProperty("length", "Length", 0.0, "m", false);
    layout.addOption("Sandstone");
    layout.addOption("Shale");
    layout.addOption("Quartz vein");
    layout.addOptionProperty("rock", "Rock", 0, true);
    layout.addProperty("grade", "Grade", 0.0, "g/t", true);
    layout.addComputation("length", "to-from");
    layout.addErrorConstraint("to", "to>from", "The interval ends before it begins");
    layout.addWarningConstraint("grade", "grade<50", "Unusually rich");

    Object form;
    form.setTitle("Drill hole");
    form.addClass("Collar", true);
    form.addProperty("name", "Name", "DH-1", true);
    form.addProperty("east", "East", 512340.5, "m", true);
    form.addProperty("north", "North", 5401220.25, "m", true);
    form.addProperty("depth", "Depth", 20.0, "m", true);
    form.addErrorConstraint("depth", "depth>0", "The hole has no depth");
    form.addClass("Intervals", true);
    form.addGroup("Intervals", layout, true, true, true, true);
    addInterval(form, layout, 0, 4, 0, 0.1);
    addInterval(form, layout, 4, 9, 2, 12.5);
    addInterval(form, layout, 9, 20, 1, 0.2);
    form.addTranslation(1, "Collar", "Collet");
    form.addTranslation(1, "Intervals", "Intervalles");
    form.addTranslation(1, "Depth", "Profondeur");
    form.addTranslation(2, "Collar", "Boca");
    form.addTranslation(2, "Intervals", "Intervalos");
    form.addTranslation(2, "Depth", "Profundidad");

    Print("Current interval: " + form.getGroupElement("Intervals") + "\n");
    if (form.edit())
        Print("Current interval: " + form.getGroupElement("Intervals") + "\n");
    else
        Print("The form was cancelled.\n");
    return 0;
}
