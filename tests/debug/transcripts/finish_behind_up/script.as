int inner(int n) {
    return n + 1;
}
int middle(int n) {
    int m = inner(n);
    m += 1;
    return m;
}
int outer(int n) {
    int o = middle(n);
    return o;
}
bool less(const int &in a, const int &in b) {
    return a < b;
}
int deep(int n) {
    if (n == 0) return 0;
    int r = deep(n - 1);
    return r + 1;
}
int main() {
    int x = outer(1);
    int[] v = {3, 1, 2};
    v.sort(less);
    x += deep(3);
    return x;
}
