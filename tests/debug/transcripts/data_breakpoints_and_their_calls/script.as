int total = 1;
int ten(int n) {
    int times = n * 10; int total = times; return total + 0;
}
namespace pit { int depth = 3; void dig() { int depth = 8; depth++; pit::depth++; } }
int main() {
    int own = 5;
    int sum = ten(own) + ten(7);
    own = sum;
    pit::dig();
    total = sum;
    return 0;
}
