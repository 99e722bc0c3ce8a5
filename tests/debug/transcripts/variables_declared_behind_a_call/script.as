int id(int x) {
    return x;
}
int main() {
    int x = 5;
    {
        id(9);
        int x;
        x = 3;
        id(x);
    }
    id(1);
    int y;
    return 0;
}
