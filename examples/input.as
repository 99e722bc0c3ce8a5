// Input that is checked before it is believed. Try it with words, too large numbers and commas.

// Reads the whole text as a number; false when it is none.
bool toNumber(string text, double &out value) {
    value = 0;
    double scale = 0;
    uint digits = 0;
    for (uint i = 0; i < text.length(); i++) {
        int digit = int(text[i]) - 48;
        if (text[i] == 46 && scale == 0) {  // the decimal point
            scale = 1;
        } else if (digit >= 0 && digit <= 9) {
            value = value * 10 + digit;
            scale *= 10;
            digits++;
        } else {
            return false;
        }
    }
    if (scale > 0) value /= scale;
    return digits > 0;
}

double ask(string question, double lowest, double highest) {
    string answer;
    double value = 0;
    while (true) {
        Print(question + " (" + lowest + " to " + highest + "): ");
        Input(answer);
        if (answer == "") return lowest;  // the input has ended
        if (!toNumber(answer, value)) Print("\"" + answer + "\" is no number.\n");
        else if (value < lowest || value > highest) Print("That is out of range.\n");
        else return value;
    }
    return 0;
}

int main() {
    double depth = ask("Depth of the hole in m", 1, 2000);
    double density = ask("Density in t/m3", 1.5, 7.5);
    Print("\nA core of 63.5 mm weighs " + depth * density * 1000 * 0.003167 + " kg.\n");
    return 0;
}
