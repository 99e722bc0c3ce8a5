class Stone {
    int weight = 0;
    void add(int more) {
        weight += more;
    }
}
namespace pit {
    void dig(int depth) {
        depth++;
    }
}
void nothing() {}
Stone quarry;

int main() {
    for (int i = 1; i <= 6; i++) {
        quarry.add(i);
        pit::dig(i);
    }
    nothing();
    return 0;
}
