class /*Vec*/Vec {
    double /*x*/x = 0, /*y*/y = 0;
    Vec() {}
    Vec(double /*ax*/ax, double ay) { x = /*axu*/ax; y = ay; }
    Vec@ /*add*/opAdd(const Vec &in /*o*/o) const { return Vec(/*xu*/x + /*ou*/o./*ox*/x, y + o./*oy*/y); }
    bool /*eq*/opEquals(const Vec &in o) const { return x == o.x && y == o.y; }
    int opCmp(const Vec &in o) const { return x < o.x ? -1 : 1; }
    double /*idx*/opIndex(int i) const { return i == 0 ? x : y; }
    Vec@ opNeg() const { return Vec(-x, -y); }
    double opCall(double k) const { return x * k; }
    double opConv() const { return x; }
    double /*len*/length() const { return x; }
}
int main() {
    Vec a(1, 2), /*b*/b(3, 4);
    double r = (a + /*bu*/b)./*l1*/length() + (-a)./*l2*/length() + a[1] + a(2.0);
    if (a == b || a < b) r = (a + b + a)./*x1*/x;
    return int(r + double(a) + (a + b)./*off*/y);
}
//: def l1 = len
//: def l2 = len
//: def x1 = x
//: def ox = x
//: def bu = b
//: def off = y
//: refs len = len l1 l2
//: refs b = b bu *
//: refs o = o ou *
//: rename add plus refused
//: rename eq same refused
//: rename len opAdd refused
//: rename idx at refused
//: rename len norm = len l1 l2
//: rename ax x refused
//: hover l1 : double Vec::length() const
//: hover add : opAdd
//: offer off : x y length !opAdd !opEquals
//: symbol opAdd 6 Vec
//: symbol x 8 Vec
//: symbol y 8 Vec
