enum Kind { Sand = 1 }
void fill(int &out value) {
    value = 3;
}
int main() {
    int plain;
    int first, second = 2, third;
    bool flag = second > 1;
    Kind kind;
    double real;
    for (int i = 0; i < 2; i++) {
        int inner;
        inner = i;
        if (i > 0) second++;
    }
    fill(plain);
    third = 4;
    for (first = 0; first < 1; first++) third++;
    return plain + third;
}
