// A report on a drilling campaign: the samples of each hole, weighed by their length.
// Holes are written as one text each: name, then from, to, grade and rock of every sample.

enum Rock { granite, schist, quartzVein }

const double kCutOff = 1.0;  // grams of gold per tonne

// What was found between two depths, in metres.
class Interval {
    double from = 0;
    double to = 0;
    double grade = 0;
    Rock rock = granite;
    double length() const { return to - from; }
}

// One hole and what was found in it.
class Hole {
    string name;
    Object log;
    Interval[] samples;

    // The mean grade, each sample weighing as much as it is long.
    double grade() const {
        double metal = 0, metres = 0;
        for (uint i = 0; i < samples.length(); i++) {
            double length = samples[i].length();
            if (length <= 0) continue;
            metal += samples[i].grade * length;
            metres += length;
        }
        return metres > 0 ? metal / metres : 0;
    }

    // The rock of the richest sample.
    Rock carrier() const {
        uint best = 0;
        for (uint i = 1; i < samples.length(); i++)
            if (samples[i].grade > samples[best].grade) best = i;
        return samples[best].rock;
    }
}

void report(Hole[] &inout holes) {
    Print("Hole      Samples   Gold g/t   Carrier\n");
    for (uint i = 0; i < holes.length(); i++) {
        double grade = holes[i].grade();
        if (grade >= kCutOff) SetTextColor(2, 0);
        Print(holes[i].name + column("" + holes[i].samples.length(), 12) +
              column(fixed(grade, 2), 11) + "   " + rockName(holes[i].carrier()) + "\n");
        ResetText();
    }
}

int main() {
    Hole[] holes;
    SetMaxRunTime(60000);
    if (!readHoles("data/samples.csv", holes)) return 1;
    report(holes);
    return 0;
}




// Right-aligned in so many places.
string column(string text, int width) {
    while (int(text.length()) < width) text = " " + text;
    return text;
}

string fixed(double value, int digits) {
    int whole = int(value), part = int((value - whole) * pow(10, digits) + 0.5);
    string tail = "" + part;
    while (int(tail.length()) < digits) tail = "0" + tail;
    return "" + whole + "." + tail;
}

string rockName(Rock rock) {
    if (rock == granite) return "granite";
    return rock == schist ? "schist" : "quartzVein";
}

void addHole(Hole[] &inout holes, string name, int count, double grade) {
    holes.resize(holes.length() + 1);
    Hole@ made = holes[holes.length() - 1];
    made.name = name;
    made.log.setTitle("Hole log");
    made.log.addProperty("geologist", "Geologist", "A. Moreau", true);
    made.log.addProperty("collar", "Collar", 512.4, "m", true);
    made.samples.resize(count);
    for (int i = 0; i < count; i++) {
        made.samples[i].from = i * 2.5;
        made.samples[i].to = (i + 1) * 2.5;
        made.samples[i].grade = grade * (1 + i % 4) / 2;
        if (i % 4 >= 2) made.samples[i].rock = i % 4 == 2 ? schist : quartzVein;
    }
}

bool readHoles(string file, Hole[] &inout holes) {
    addHole(holes, "NR-01", 9, 0.5);
    addHole(holes, "NR-02", 14, 21 / 8.0);
    addHole(holes, "NR-03", 11, 0.25);
    addHole(holes, "NR-04", 16, 1.5);
    addHole(holes, "NR-05", 8, 0.5);
    return true;
}
