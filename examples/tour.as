// A tour: reads the samples of a drilling campaign, makes composites of 5 m, and prints a table.
// Run it from the project's folder or from examples/; open it in the editor to step through it.

const double kCompositeLength = 5;  // metres
const double kCutOff = 1.0;         // grams of gold per tonne

class Interval {
    double from = 0;
    double to = 0;
    double grade = 0;

    double length() const { return to - from; }
}

// One hole and what was found in it.
class Hole {
    string name;
    Interval[] samples;
    Interval[] composites;

    double depth() const { return samples.length() > 0 ? samples[samples.length() - 1].to : 0; }

    // The mean grade, each sample weighing as much as it is long.
    double grade() const {
        double metal = 0, metres = 0;
        for (uint i = 0; i < samples.length(); i++) {
            metal += samples[i].grade * samples[i].length();
            metres += samples[i].length();
        }
        return metres > 0 ? metal / metres : 0;
    }

    // Cuts the samples into pieces of equal length, so that they can be compared.
    void makeComposites() {
        for (double top = 0; top < depth(); top += kCompositeLength) {
            double metal = 0, metres = 0;
            for (uint i = 0; i < samples.length(); i++) {
                double overlap = lower(samples[i].to, top + kCompositeLength) -
                                 higher(samples[i].from, top);
                if (overlap <= 0) continue;
                metal += samples[i].grade * overlap;
                metres += overlap;
            }
            Interval composite;
            composite.from = top;
            composite.to = lower(top + kCompositeLength, depth());
            composite.grade = metres > 0 ? metal / metres : 0;
            composites.insertLast(composite);
        }
    }

    // The richest composite.
    Interval best() const {
        Interval richest;
        for (uint i = 0; i < composites.length(); i++)
            if (composites[i].grade > richest.grade) richest = composites[i];
        return richest;
    }
}

double lower(double a, double b) { return a < b ? a : b; }
double higher(double a, double b) { return a > b ? a : b; }

// The part of a line between two commas, counted from 0.
string field(string line, int index) {
    int start = 0;
    for (; index > 0; index--) start = StrFind(line, ",", start) + 1;
    int end = StrFind(line, ",", start);
    if (end < 0) end = StrSize(line);
    return StrSubstring(line, start, end - start);
}

double number(string text) {
    double value = 0, scale = 0;
    for (uint i = 0; i < text.length(); i++) {
        if (text[i] == 46) {  // the decimal point
            scale = 1;
        } else {
            value = value * 10 + (int(text[i]) - 48);
            scale *= 10;
        }
    }
    return scale > 0 ? value / scale : value;
}

string fixed(double value, int decimals) {
    double scale = pow(10, decimals);
    double whole = floor(value * scale + 0.5);
    string digits = "" + int(fmod(whole, scale));
    while (int(digits.length()) < decimals) digits = "0" + digits;
    return "" + int(whole / scale) + "." + digits;
}

string column(string text, uint width) {
    while (text.length() < width) text = " " + text;
    return text;
}

string bar(double value, double unit) {
    string marks;
    for (double drawn = unit; drawn <= value + unit / 2; drawn += unit) marks += "#";
    return marks == "" ? "" : "  " + marks;
}

bool openSamples() {
    return OpenInputFile("examples/data/samples.csv") || OpenInputFile("data/samples.csv") ||
           OpenInputFile("samples.csv");
}

// A line holds: hole,from,to,gold. A line without blanks is one word to Input.
bool readHoles(Hole[] &inout holes) {
    if (!openSamples()) return false;
    string line;
    Input(line);  // the headings
    for (Input(line); line != ""; Input(line)) {
        string name = field(line, 0);
        if (holes.length() == 0 || holes[holes.length() - 1].name != name) {
            holes.resize(holes.length() + 1);
            holes[holes.length() - 1].name = name;
        }
        Interval sample;
        sample.from = number(field(line, 1));
        sample.to = number(field(line, 2));
        sample.grade = number(field(line, 3));
        holes[holes.length() - 1].samples.insertLast(sample);
    }
    CloseInputFile();
    return holes.length() > 0;
}

void printTable(Hole[] &in holes) {
    Print("Hole      Depth  Samples  Gold g/t      Best 5 m  Gold g/t\n");
    Print("-----------------------------------------------------------\n");
    for (uint i = 0; i < holes.length(); i++) {
        Interval best = holes[i].best();
        Print(holes[i].name + column(fixed(holes[i].depth(), 1), 15 - holes[i].name.length()) +
              column("" + holes[i].samples.length(), 9) + column(fixed(holes[i].grade(), 2), 10) +
              column(fixed(best.from, 0) + " to " + fixed(best.to, 0), 14));
        if (best.grade >= kCutOff) SetTextColor(6, 0);
        Print(column(fixed(best.grade, 2), 10));
        ResetText();
        Print("\n");
    }
}

void printProfile(Hole &in hole) {
    Print("\n" + hole.name + " from top to bottom, one # for 0.25 g/t:\n");
    for (uint i = 0; i < hole.composites.length(); i++)
        Print(column(fixed(hole.composites[i].from, 1), 7) +
              column(fixed(hole.composites[i].grade, 2), 7) +
              bar(hole.composites[i].grade, 0.25) + "\n");
}

int main() {
    Hole[] holes;
    if (!readHoles(holes)) {
        Print("data/samples.csv was not found: run this from the folder of the examples.\n");
        return 1;
    }

    double metal = 0, metres = 0, above = 0;
    uint richest = 0;
    for (uint i = 0; i < holes.length(); i++) {
        Progress("Compositing", holes[i].name);
        holes[i].makeComposites();
        metal += holes[i].grade() * holes[i].depth();
        metres += holes[i].depth();
        for (uint k = 0; k < holes[i].composites.length(); k++)
            if (holes[i].composites[k].grade >= kCutOff) above += holes[i].composites[k].length();
        if (holes[i].best().grade > holes[richest].best().grade) richest = i;
    }

    Print("Drilling campaign North Ridge, composites of " + kCompositeLength + " m\n\n");
    printTable(holes);
    Print("\n" + fixed(metres, 1) + " m in " + holes.length() + " holes, mean " +
          fixed(metal / metres, 2) + " g/t; " + fixed(100 * above / metres, 1) +
          " %% of the composites reach " + kCutOff + " g/t.\n");
    printProfile(holes[richest]);
    return 0;
}
