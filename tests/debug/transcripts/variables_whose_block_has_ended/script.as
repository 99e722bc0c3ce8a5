int f(int n) {
    return n + 1;
}
int main() {
    { int gone = 11; f(gone); }
    int r = f(0);
    for (int i = 0; i < 2; i++) {
        int inner = i * 3;
        r += f(inner);
    }
    if (r > 0) {
        int deep = 9;
        r += f(deep);
    }
    string behind;
    int[] all = {1}, more = {f(2)};
    { int same = 3; f(same); } { double same = 2.5; f(int(same)); }
    do { int pass = r; f(pass); } while (f(r) < 0);
    while (f(--r) > 20) { int pass = r; f(pass); }
    try { string text = "t"; f(f(1) / (r - r) * f(2)); } catch { int caught = 4; f(caught); }
    return r;
}
