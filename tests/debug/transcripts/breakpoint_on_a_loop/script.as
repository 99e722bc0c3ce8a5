int main() {
    int sum = 0;
    for (int i = 1; i <= 6; i++)
        sum += i;
    for (int i = 1; i <= 2; i++) sum += 10 * i;
    // a remark

    Print("" + sum + "\n");
    return 0;
}
