int twice(int n) {
    return n * 2;
}
int give(int n, int &out value) {
    value = n;
    return n;
}
class Seam {
    int give(int &out value) {
        value = 4;
        return twice(value);
    }
}
int tell() {
    int told;
    return give(7, told);
}
int main() {
    int first;
    give(twice(1), first);
    int second;
    int result = give(2, second);
    Seam seam;
    int third;
    seam.give(third);
    for (int i = 0; i < 2; i++) {
        int again;
        give(i, again);
    }
    return result + second + third + tell();
}
