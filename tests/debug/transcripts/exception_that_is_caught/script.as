int divide(int a, int b) {
    return a / b;
}

int main() {
    int result = 0;
    try {
        result = divide(1, 0);
    } catch {
        result = -1;
    }
    Print("" + result + "\n");
    return 0;
}
