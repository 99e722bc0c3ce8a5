// A form that sizes a pump: two pages, units, options, a colour, a file, a choice between units,
// rules with three messages, computations, hints, and texts in French and Spanish.
// Without a window to fill it in the form is cancelled, and the script says so.

void addTexts(Object &form)
{
    form.addTranslation(1, "Duty", "Service");
    form.addTranslation(2, "Duty", "Servicio");
    form.addTranslation(1, "Report", "Rapport");
    form.addTranslation(2, "Report", "Informe");
    form.addTranslation(1, "Water", "Eau");
    form.addTranslation(2, "Water", "Agua");
    form.addTranslation(1, "Motor", "Moteur");
    form.addTranslation(2, "Motor", "Motor");
    form.addTranslation(1, "Flow", "Débit");
    form.addTranslation(2, "Flow", "Caudal");
    form.addTranslation(1, "Head", "Hauteur");
    form.addTranslation(2, "Head", "Altura");
    form.addTranslation(1, "Power", "Puissance");
    form.addTranslation(2, "Power", "Potencia");
    form.addTranslation(1, "The flow must be positive", "Le débit doit être positif");
    form.addTranslation(2, "The flow must be positive", "El caudal debe ser positivo");
    form.addTranslation(1, "Measured at the outlet", "Mesuré à la sortie");
    form.addTranslation(2, "Measured at the outlet", "Medido en la salida");
}

void addDuty(Object &form)
{
    form.addClass("Duty", true);
    form.addCategory("Water");
    form.addProperty("flow", "Flow", 36.0, "m3/h", true);
    form.addProperty("head", "Head", 25.0, "m", true);
    form.addProperty("density", "Density", 1000.0, "kg/m3", true);
    form.addCategory("Motor");
    form.addOption("Centrifugal");
    form.addOption("Submersible");
    form.addOption("Diaphragm");
    form.addOptionProperty("kind", "Kind of pump", 0, true);
    form.addProperty("stages", "Stages", 1, "", true);
    form.addProperty("efficiency", "Efficiency", 70, "%", true);
    form.addProperty("power", "Power", 0.0, "kW", false);
    form.addProperty("fixed", "Fixed speed", true, true, 0);
    form.addProperty("variable", "Variable speed", false, true, 0);

    form.addHint("flow", "Measured at the outlet");
    form.addErrorConstraint("flow", "flow>0", "The flow must be positive");
    form.addErrorConstraint("flow", "flow<=1000", "No pump moves more than 1000 m3/h");
    form.addErrorConstraint("efficiency", "efficiency>=10&&efficiency<=95",
                            "The efficiency lies between 10 and 95 %");
    form.addWarningConstraint("head", "head<=100", "Consider more stages");
    form.addEnableConstraint("stages", "kind<>2");
    form.addComputation("power", "density*9.81*flow/3600*head/(efficiency*10)");
}

void addReport(Object &form)
{
    form.addClass("Report", true);
    form.addProperty("site", "Site", "North pit", true);
    form.addProperty("colour", "Colour of the curve", 255, "color", true);
    form.addProperty("curve", "Pump curve", "", "Text files|*.txt;*.csv|All files|*", true, true);
}

int main()
{
    Object form;
    form.setTitle("Pump");
    addDuty(form);
    addReport(form);
    addTexts(form);

    Print("The form has " + form.getPropertiesCount() + " properties.\n");
    if (form.edit())
    {
        double power;
        form.getProperty("power", power);
        Print("The pump needs " + power + " kW.\n");
    }
    else
        Print("The form was cancelled.\n");
    return 0;
}
