class Stone { int weight = 1; int age = 2; }
int main() {
    Stone stone;
    int n = 1;
    stone.weight = 5;
    n = 2;
    n = 2;
    return 0;
}
