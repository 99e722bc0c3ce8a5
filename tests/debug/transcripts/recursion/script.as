int sum(int n) {
    if (n == 0)
        return 0;
    int rest = sum(n - 1);
    return n + rest;
}

int main() {
    int total = sum(3);
    Print("" + total + "\n");
    return 0;
}
