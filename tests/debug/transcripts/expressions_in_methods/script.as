class Base {
    int shared = 1;
    int plus(int n) const { return shared + n; }
}
class Stone : Base {
    private int weight = 3;
    int get_half() const property { return weight / 2; }
    private int secret() { return 7; }
    int use(int n) {
        return weight + n;
    }
}
namespace pit {
    int depth = 9;
    int level(int n) { return depth + n; }
    int main() {
        int local = 2;
        return local;
    }
}
int weight = 50;
int main() {
    Stone stone;
    stone.use(4);
    pit::main();
    return 0;
}
