#include "editor/assist/tour_script.h"

namespace korvant {

const char kTourScript[] =
    R"(// A tour: reads the samples of a drilling campaign, weighs them by their length, prints a table.
// F5 runs it. Click beside a line number to stop there; F11 and F12 then go on step by step.

const double kCutOff = 1.0;  // grams of gold per tonne

// A line holds: hole, from, to (metres), gold (grams per tonne).
const string[] kLines = {
    "NR-01,0,12.5,0.14",  "NR-01,12.5,20,1.82", "NR-01,20,42,0.21",
    "NR-02,0,25,0.17",    "NR-02,25,35,2.58",   "NR-02,35,55.5,0.43",
    "NR-03,0,10,0.24",    "NR-03,10,15,0.78",   "NR-03,15,38,0.19"};

class Sample {
    double from = 0;
    double to = 0;
    double grade = 0;

    double length() const { return to - from; }
}

// One hole and what was found in it.
class Hole {
    string name;
    Sample[] samples;

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
}

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

string fixed(double value) {
    int hundredths = int(value * 100 + 0.5);
    string digits = "" + hundredths % 100;
    if (digits.length() < 2) digits = "0" + digits;
    return "" + hundredths / 100 + "." + digits;
}

string column(string text, uint width) {
    while (text.length() < width) text = " " + text;
    return text;
}

void readHoles(Hole[] &inout holes) {
    for (uint i = 0; i < kLines.length(); i++) {
        string name = field(kLines[i], 0);
        if (holes.length() == 0 || holes[holes.length() - 1].name != name) {
            holes.resize(holes.length() + 1);
            holes[holes.length() - 1].name = name;
        }
        Sample sample;
        sample.from = number(field(kLines[i], 1));
        sample.to = number(field(kLines[i], 2));
        sample.grade = number(field(kLines[i], 3));
        holes[holes.length() - 1].samples.insertLast(sample);
    }
}

void report(Hole[] &in holes) {
    Print("Hole     Samples     Depth  Gold g/t\n");
    for (uint i = 0; i < holes.length(); i++) {
        double grade = holes[i].grade();
        Print(holes[i].name + column("" + holes[i].samples.length(), 11) +
              column(fixed(holes[i].depth()), 10));
        if (grade >= kCutOff / 2) SetTextColor(2, 0);
        Print(column(fixed(grade), 10) + "\n");
        ResetText();
    }
}

int main() {
    Hole[] holes;
    readHoles(holes);
    report(holes);
    return 0;
}
)";

}  // namespace korvant
