// switches: --end-of-input-ends-run
// input: 1 2
// exit: 1
// error: desc: End of input
int main() {
    int value;
    while (true) {
        Input(value);
        Print("" + value + "\n");
    }
    // expect: 1
    // expect: 2
    return 0;
}
