interface Weighed { int weigh(); }
class /*Bare*/Bare {
    int n = 1;
}
namespace pit {
    class /*Rock*/Rock : Weighed {
        protected int m;
        Rock() { m = 0; }
        // Of one weight.
        /*byInt*/Rock(int /*w*/weight) { m = weight; }
        /*byName*/Rock(string name) { m = 2; }
        /*byTwo*/Rock(int weight, int more, string name = "") { m = weight + more; }
        /*bySelf*/Rock(const Rock &in other) { m = other.m; }
        int weigh() { return m; }
    }
}
class Stone : pit::Rock {
    Stone() { /*s1*/super(4); }
    Stone(string /*p*/word) { /*s2*/super(word + "x"); }
    Stone(int a, string b) { /*s3*/super(a, 2); }
    Stone(pit::Rock@ rock) { /*s4*/super(rock); }
}
class Pebble : Weighed, /*base*/Bare {
    Pebble() { /*s5*/super(); }
    int weigh() { return n; }
}
class Sand : Weighed {
    Sand() { Print("super(1)"); }
    int weigh() { return 0; }
}
int main() {
    Stone one(/*arg*/3, "x");
    return one.weigh() + Pebble().weigh() + Sand().weigh();
}
//: def s1 = byInt
//: def s2 = byName
//: def s3 = byTwo
//: def s4 = bySelf
//: def s5 = Bare
//: def base = Bare
//: hover s1 : Rock(int weight)
//: hover s5 : class Bare
//: rename s1 other refused
