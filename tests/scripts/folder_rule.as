// switches: --file-access .
int main() {
    Print(OpenOutputFile("inside.txt") ? "" : "refused\n");
    Print("text\n");
    CloseOutputFile();
    Print(OpenInputFile("inside.txt") ? "inside\n" : "refused\n");       // expect: inside
    Print(OpenInputFile("/etc/passwd") ? "outside\n" : "refused\n");     // expect: refused
    Print(OpenOutputFile("../outside.txt") ? "outside\n" : "refused\n");  // expect: refused
    return 0;
}
