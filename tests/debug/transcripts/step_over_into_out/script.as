int twice(int n) {
    int result = n * 2;
    return result;
}

int main() {
    int total = 0;
    for (int i = 0; i < 2; i++) {
        total += twice(i);
    }
    Print("total " + total + "\n");
    return total;
}
