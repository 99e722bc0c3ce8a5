int add(int a, int b) {
    return a + b;
}
bool less(const int &in a, const int &in b) { bool smaller = a < b; return smaller; }
void loops() {
    for (int i = 0; i < 3; i++)
        Print("");
}
int main() {
    int sum = add(add(1, 2), add(3, 4));
    loops();
    int[] v = {3, 2, 1};
    v.sort(less);
    return sum;
}
