// exit: 1
int half(string text) {
    return text[text.length()] / 2;  // error: line: 3
}
// error: desc: Out of range
// error: uncaught_exception.as:3
int main() {
    Print("before\n");  // expect: before
    half("abc");
    Print("never\n");
    return 0;
}
