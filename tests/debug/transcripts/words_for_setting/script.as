class Stone {
    int weight;
    string word;
    int get_twice() const property { return weight * 2; }
    void set_twice(int given) property { weight = given / 2; }
}
int sum(int n) {
    if (n == 0) return 0;
    int rest = sum(n - 1);
    return n + rest;
}
int main() {
    Stone stone;
    int total = 1;
    total = sum(4);
    return total;
}
