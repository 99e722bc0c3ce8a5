// input: console
int main() {
    string word;
    Print(OpenOutputFile("one.txt") ? "" : "not opened\n");
    Print("first 1\n");
    Print(OpenOutputFile("two.txt") ? "" : "not opened\n");  // closes one.txt
    Print("second\n");
    ApendOutputFile("one.txt");
    Print("third\n");
    CloseOutputFile();
    CloseOutputFile();
    Print("back\n");  // expect: back

    OpenInputFile("one.txt");
    Input(word);
    Print(word + "\n");  // expect: first
    int number;
    Input(number);
    Print("" + number + "\n");  // expect: 1
    Input(word);
    Print(word + "\n");                                  // expect: third
    Print(OpenInputFile("missing.txt") ? "" : "none\n");  // expect: none
    Input(word);
    Print(word + "\n");  // expect: console
    OpenInputFile("two.txt");
    Input(word);
    Print(word + "\n");  // expect: second
    return 0;
}
