int zero = 0;
int fault() {
    int local = 4;
    return local / zero;
}
int made = fault();

int main() {
    return 0;
}
