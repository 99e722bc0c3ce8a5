void turns(int first) {
    int found;
    for (int i = 0; i < 4; i++) {
        if (i == first) found = i;
        Print("");
    }
}
int main() {
    turns(2);
    turns(0);
    int sum = 0;
    for (int k = 0; k < 10; k++) sum += k;
    return sum;
}
