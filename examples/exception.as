// What goes wrong can be caught. What is not caught ends the script and says where.
// Ends with exit code 1.
int digitAt(string text, int position) {
    return int(text[position]) - 48;
}

int main() {
    string number = "472";
    for (int i = 0; i < 5; i++) {
        try {
            Print("Digit " + i + " is " + digitAt(number, i) + ".\n");
        } catch {
            Print("There is no digit " + i + ".\n");
        }
    }
    int zero = StrSize("");
    Print("Now without a safety net:\n");
    return 10 / zero;
}
