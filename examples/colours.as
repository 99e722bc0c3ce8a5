// The console's colours: 0 black, 1 blue, 2 green, 3 cyan, 4 red, 5 magenta, 6 yellow, 7 grey.
// They work on a terminal and in the console window; in a file only the text is left.
int main() {
    Print("Ore grades\n");  // colours begin to work with the first output
    double[] grades = {0.2, 1.4, 3.8, 0.9, 6.5};
    for (uint i = 0; i < grades.length(); i++) {
        if (grades[i] > 3) SetTextColor(4, 0);
        else if (grades[i] > 1) SetTextColor(6, 0);
        SetTextBold(grades[i] > 5, false);
        Print("  " + grades[i] + " %%");
        ResetText();
        Print("\n");
    }
    return 0;
}
