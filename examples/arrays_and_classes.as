// Arrays grow and sort; a class keeps what belongs together.
class Sample {
    string rock;
    double grade = 0;

    Sample() {}
    Sample(string name, double value) {
        rock = name;
        grade = value;
    }
    // Lets an array of samples sort itself: rich ones first.
    int opCmp(const Sample &in other) const {
        if (grade == other.grade) return 0;
        return grade > other.grade ? -1 : 1;
    }
}

double mean(const double[] &in values) {
    double sum = 0;
    for (uint i = 0; i < values.length(); i++) sum += values[i];
    return values.length() > 0 ? sum / values.length() : 0;
}

int main() {
    double[] depths = {12.5, 30, 7.25};
    depths.insertLast(50.25);
    depths.sortAsc();
    Print("Depths:");
    for (uint i = 0; i < depths.length(); i++) Print(" " + depths[i]);
    Print("; mean " + mean(depths) + "\n");

    Sample[] samples;
    samples.insertLast(Sample("granite", 0.4));
    samples.insertLast(Sample("skarn", 3.1));
    samples.insertLast(Sample("shale", 0.9));
    samples.sortAsc();
    for (uint i = 0; i < samples.length(); i++)
        Print("" + (i + 1) + ". " + samples[i].rock + " with " + samples[i].grade + " %%\n");
    return 0;
}
