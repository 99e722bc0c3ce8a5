class /*Base*/Base {
    protected int /*secret*/secret = 3;
    int /*shown*/shown = 1;
    /*bctor*/Base(int /*s*/s) { /*w*/shown = s; }
    int /*area*/area() { return 0; }
    int /*both*/both() { return /*callarea*/area(); }
    int /*final*/fixed() final { return 1; }
}
class /*Mid*/Mid : /*b1*/Base {
    Mid() { super(2); }
    int /*area2*/area() override { return /*se*/secret * 2 + /*bq*/Base::/*ba*/area(); }
}
class /*Deep*/Deep : /*b2*/Mid {
    int /*area3*/area() override { return /*sh*/shown + this./*se2*/secret + /*off*/area2(1) + /*fix*/fixed(); }
    int /*over*/area2(int /*x*/x) { return /*xu*/x; }
    int /*area4*/area(int by) { return by; }
}
int main() {
    /*tm*/Mid m;
    /*tb*/Base@ b = m;
    Deep d;
    int r = m./*u1*/area() + b./*u2*/area() + d./*u3*/area() + d./*u4*/area(4) + d./*u5*/both();
    d./*sho*/shown = r;
    return d./*dot*/shown;
}
//: def u1 = area2
//: def u2 = area
//: def u3 = area3
//: def u4 = area4
//: def ba = area
//: def bq = Base
//: def se = secret
//: def se2 = secret
//: def sh = shown
//: def callarea = area
//: def b2 = Mid
//: def u5 = both
//: def fix = final
//: refs area = area callarea area2 ba area3 u1 u2 u3
//: refs area3 = area callarea area2 ba area3 u1 u2 u3
//: refs area4 = area4 u4
//: refs secret = secret se se2
//: refs shown = shown w sh sho dot
//: refs Base = Base bctor b1 bq tb
//: rename u1 surface = area callarea area2 ba area3 u1 u2 u3
//: rename area4 areaBy = area4 u4
//: rename area4 both2 = area4 u4
//: rename secret shown refused
//: rename over area refused
//: rename area both refused
//: hover u1 : int Mid::area()
//: hover se : int Base::secret
//: offer dot : shown area both area2 !secret
//: offer off : secret shown area both area2 !x !r
//: offer se2 : secret shown
//: impl area = area area2 area3
//: impl Base = Mid Deep
//: symbol Mid 5
//: symbol area2 6 Deep
