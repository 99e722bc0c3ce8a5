namespace geo {
    interface /*Shape*/Shape { double /*area*/area() const; }
    namespace detail { double /*sq*/square(double /*v*/v) { return /*vu*/v * v; } }
    class /*Circle*/Circle : /*sb*/Shape {
        double /*r*/r;
        Circle(double radius) { /*rw*/r = radius; }
        double /*area2*/area() const { return 3 * detail::/*squ*/square(/*ru*/r); }
    }
    class Ring : Circle {
        double /*hole*/hole = 1;
        Ring() { super(2); }
        double /*area3*/area() const override { return Circle::/*ca*/area() - detail::/*squ2*/square(/*hu*/hole) + /*ru2*/r * 0; }
    }
    Shape@ /*best*/best(array<Shape@>@ /*all*/all) { return /*alu*/all[0]; }
}
double measure(geo::/*st*/Shape@ s) { return s./*au*/area(); }
int main() {
    geo::/*ct*/Circle c(2);
    geo::Ring /*ring*/ring;
    array<geo::/*st2*/Shape@> list = {c, ring};
    double d = measure(/*rg*/ring) + geo::/*bu*/best(list)./*au2*/area() + c./*au3*/area() + ring./*ru3*/r + geo::detail::/*sq3*/square(ring./*hu2*/hole);
    return int(d) + int(geo::detail::/*off*/square(2));
}
//: def st = Shape
//: def ct = Circle
//: def bu = best
//: def au2 = area
//: def au3 = area2
//: def ru3 = r
//: def sq3 = sq
//: def squ = sq
//: def ca = area2
//: def sb = Shape
//: refs area = area area2 area3 ca au au2 au3
//: refs r = r rw ru ru2 ru3
//: refs Shape = Shape sb st st2 *
//: refs sq = sq squ squ2 sq3 off
//: rename area3 surface = area area2 area3 ca au au2 au3
//: rename sq power2 = sq squ squ2 sq3 off
//: rename hole r refused
//: rename best Circle refused
//: hover sq3 : double geo::detail::square(double v)
//: hover ring : geo::Ring ring
//: offer off : square !best !main
//: impl area = area2 area3
//: symbol Circle 5 geo
//: symbol square 12 detail
