funcdef int Way(int);
int doubled(int n) {
    return n * 2;
}
int squared(int n) {
    return n * n;
}
class Seam {
    Way@ way;
}
int main() {
    Way@ way = doubled;
    Seam seam;
    return way(5);
}
