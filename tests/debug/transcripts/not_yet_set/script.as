class Stone { int weight = 2; }
int count() {
    return 5;
}
int main() {
    int a = count(), b = a + 1;
    Stone stone;
    string text = "x";
    int[] numbers = {1};
    for (int i = 0; i < 1; i++) {
        double inner = 0.5;
    }
    return 0;
}
