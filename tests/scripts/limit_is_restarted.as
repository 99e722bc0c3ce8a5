// Waiting for input starts the limit anew, so that 10 times 60 ms fit into one of 400 ms.
// input: 1 2 3 4 5 6 7 8 9 10
void pass(uint milliseconds) {
    uint start = GetSystemTime();
    while (GetSystemTime() - start < milliseconds) {}
}

int main() {
    SetMaxRunTime(400);
    int sum = 0;
    for (int i = 0; i < 10; i++) {
        int value;
        pass(60);
        Input(value);
        sum += value;
    }
    Print("" + sum + "\n");  // expect: 55
    return 0;
}
