int deep(int left) {
    int sum = 0;
    for (int i = 0; i < 3; i++) {
        int way; bool met;
        sum += i;
        if (i == 1) way = 7;
        if (left > 0) sum += deep(left - 1);
        met = i > 1;
    }
    return sum;
}
int main() {
    int n = 0;
    for (;;) {
        int8 first;
        if (++n > 3) break;
        first = -1;
    }
    n = 0;
    while (n < 3) {
        double kept;
        while (n % 2 == 0)
            n++;
        n++;
    }
    return deep(1);
}
