int /*box*/box(int /*w*/width, int /*h*/height = 2, int /*d*/depth = /*kd*/kDepth) { return /*wu*/width * /*hu*/height * /*du*/depth; }
const int /*kDepth*/kDepth = 3;
class Crate {
    int /*size*/size;
    Crate(int /*s*/size = 4, bool /*o*/open = false) { this.size = /*su*/size; }
    void /*fill*/fill(int amount, bool shake = true) { size += amount; }
}
int main() {
    int r = /*b1*/box(/*g1*/1) + /*b2*/box(1, 5) + /*b3*/box(/*nw*/width: 1, /*nd*/depth: 9) + box(2, /*nh*/height: 3);
    Crate c(/*ns*/size: 2, /*no*/open: true);
    c./*f1*/fill(/*fa*/amount: 3, /*fs*/shake: false);
    Crate e(/*ge*/1, /*ge2*/true);
    r += box(1, /*g2*/2, /*g3*/3);
    return r;
}
//: def b1 = box
//: def b3 = box
//: def nw = w
//: def nd = d
//: def ns = s
//: def kd = kDepth
//: refs w = w wu nw
//: refs d = d du nd
//: refs h = h hu nh
//: refs s = s su ns
//: rename w breadth = w wu nw
//: rename d kDepth refused
//: rename h width refused
//: rename s extent = s su ns
//: hover b1 : int box(int width, int height = 2, int depth = kDepth)
//: hover hu : int height
//: sign g1 = 1 0 0 : box(int width
//: sign g2 = 1 0 1 : int height = 2
//: sign g3 = 1 0 2 : box
//: sign ge = 1 0 0 : Crate(int size = 4
//: sign ge2 = 1 0 1 : Crate(int size = 4
