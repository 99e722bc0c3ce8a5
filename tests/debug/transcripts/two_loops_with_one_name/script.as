int main() {
    int sum = 0;
    for (int i = 10; i < 12; i++) {
        sum += i;
    }
    for (int i = 20; i < 22; i++) {
        sum += i;
        for (int i = 30; i < 31; i++) {
            sum += i;
        }
    }
    return sum;
}
