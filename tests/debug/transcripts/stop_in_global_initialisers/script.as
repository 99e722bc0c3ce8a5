int three() {
    return 3;
}
int first = three();
int second = first + 1;

int main() {
    return second;
}
