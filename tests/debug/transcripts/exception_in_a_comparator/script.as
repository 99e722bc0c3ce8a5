int calls = 0;
bool less(const int &in a, const int &in b) {
    calls++;
    int zero = 0;
    return a / zero < b;
}

int main() {
    int[] numbers = {3, 1, 2};
    numbers.sort(less);
    Print("sorted after " + (calls > 0 ? "some" : "no") + " calls\n");
    numbers.sort(less);
    return 0;
}
