int main() {
    string text = "abc";
    int zero = 0;
    try {
        text[3] = 1;
    } catch {
        Print("index\n");  // expect: index
    }
    try {
        Print("" + 1 / zero);
    } catch {
        Print("division\n");  // expect: division
    }
    try {
        StrSubstring(text, 4, 1);
    } catch {
        Print("position\n");  // expect: position
    }
    return 0;
}
