int main() {
    string zero = "data.txt";
    zero.resize(9);
    Print(OpenOutputFile(zero + ".txt") ? "opened" : "refused");
    Print(OpenOutputFile("") ? "opened" : " refused");
    Print(OpenOutputFile(".") ? "opened" : " refused");
    Print(OpenInputFile(".") ? "opened" : " refused");
    Print("\n");  // expect: refused refused refused refused
    return 0;
}
