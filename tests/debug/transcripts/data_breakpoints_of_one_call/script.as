int n = 100;
int inner(int n) {
    n = n + 1;
    return n;
}
int middle(int n) {
    int m = inner(n);
    n += 1;
    m += inner(n);
    return m;
}
int deep(int n) {
    if (n == 0) return 0;
    int r = deep(n - 1);
    n += 10;
    r += n;
    return r;
}
int main() {
    int n = 5;
    n = middle(n);
    n = inner(n) + inner(n);
    n = deep(2);
    ::n = 7;
    return 0;
}
