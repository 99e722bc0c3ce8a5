int main() {
    int zero = 0;
    return 1 / zero;
}
