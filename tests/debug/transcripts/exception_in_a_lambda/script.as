funcdef int Change(int);

int apply(Change@ change, int value) {
    return change(value);
}

int main() {
    int zero = 0;
    int result = apply(function(x) { int y = x - 1; return x / y; }, 1);
    return result;
}
