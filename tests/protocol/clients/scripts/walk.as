enum Kind { Sand = 1, Gravel = 7 }
class Base { int depth = 2; }
class Hole : Base {
    string name = "say \"a\"\n";
    int8 small = -128;
    uint64 big = 18446744073709551615;
    int twice(int by) {
        return depth * by;
    }
}
namespace geo { double pi = 3.25; }
int total = 0;
int add(int a, int b) {
    int sum = a + b;
    return sum;
}

int main() {
    Hole hole;
    Kind kind = Gravel;
    int[] list = {1, 2, 3};
    Hole@ none = null;
    for (int i = 0; i < 5; i++) {
        total = add(total, i);
    }
    Print("total " + total + "\n");
    try {
        list[7] = 1;
    } catch {
        Print("caught\n");
    }
    int deeper = hole.twice(3);
    int zero = total - 10;
    return deeper / zero;
}
