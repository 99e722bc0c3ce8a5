// Texts: joining, looking into them, finding and cutting.
int main() {
    string name = "DH-07";
    int depth = 120;

    // Numbers join texts directly.
    Print("Hole " + name + " is " + depth + " m deep, " + 0.5 + " m in diameter.\n");

    // Positions count from 0; the third argument of StrSubstring is a length.
    int dash = StrFind(name, "-");
    string number = StrSubstring(name, dash + 1, 10);
    Print("The number after the dash is " + number + ".\n");
    Print(StrToLower(name) + " in small letters, " + StrToUpper("ore") + " in capitals.\n");
    Print("Inserted: " + StrInsert("iron", " rich", StrSize("iron")) + "\n");

    // A text is a row of bytes that can be read and changed.
    for (uint i = 0; i < name.length(); i++)
        if (name[i] == StrAsc("0")) name[i] = StrAsc("x");
    Print("With x for 0: " + name + "\n");

    // Functions that give a text share one result: keep it in a variable before the next call.
    string first = StrToUpper("first");
    string second = StrToUpper("second");
    Print(first + " and " + second + "\n");
    Print("" + (first < second ? "FIRST sorts before SECOND" : "?") + "\n");
    return 0;
}
