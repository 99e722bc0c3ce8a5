// Files: Print writes to the output file and Input reads from the input file while one is open.
int main() {
    if (!OpenOutputFile("depths.txt")) {
        Print("depths.txt cannot be written here.\n");
        return 1;
    }
    for (int i = 1; i <= 5; i++) Print("DH-" + i + " " + 12.5 * i + "\n");
    CloseOutputFile();

    // One more line at the end of the same file. The name has one "p".
    ApendOutputFile("depths.txt");
    Print("DH-6 99\n");
    CloseOutputFile();

    if (!OpenInputFile("depths.txt")) return 1;
    double total = 0;
    int holes = 0;
    string name;
    // At the end of the file there is no further word, and the text is empty.
    for (Input(name); name != ""; Input(name)) {
        double depth;
        Input(depth);
        total += depth;
        holes++;
        Print("read " + name + ": " + depth + "\n");  // no output file is open: to the console
    }
    CloseInputFile();
    Print("" + holes + " holes, " + total + " m altogether\n");
    return 0;
}
