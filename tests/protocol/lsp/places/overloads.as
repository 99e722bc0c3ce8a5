int /*s1*/show(int /*a*/a) { return 1; }
int /*s2*/show(double d) { return 2; }
int /*s3*/show(const string &in s, int n = 1) { return 3; }
int /*s4*/show(int a, int b) { return 4; }
class P {
    int /*m1*/put(int a) { return 1; }
    int /*m2*/put(const string &in a) { return 2; }
    int /*m3*/put(const string &in a, double b) { return /*mm*/put(a); }
}
int main() {
    P p;
    int r = /*u1*/show(1) + /*u2*/show(1.5) + /*u3*/show("x") + /*u4*/show(1, 2) + /*u5*/show("x", /*g5*/2);
    r += p./*v1*/put(1) + p./*v2*/put("a") + p./*v3*/put("a", 1) + /*u6*/show(/*nest*/show(2.5), p./*v4*/put(show(1, 1)));
    r += show(/*g1*/1, /*g2*/2) + p./*v5*/put(/*g3*/"a", /*g4*/2.0);
    return r;
}
//: def u1 = s1
//: def u2 = s2
//: def u3 = s3
//: def u4 = s4
//: def u5 = s3
//: def u6 = s4
//: def nest = s2
//: def v1 = m1
//: def v2 = m2
//: def v3 = m3
//: def v4 = m1
//: def mm = m2
//: refs s2 = s2 u2 nest
//: refs s3 = s3 u3 u5
//: refs m2 = m2 mm v2
//: rename s2 showReal = s2 u2 nest
//: rename u3 showText = s3 u3 u5
//: rename m1 set = m1 v1 v4
//: rename m3 store = m3 v3 v5
//: hover u2 : int show(double d)
//: hover v3 : int P::put(const string &in a, double b)
//: sign g1 = 4 0 0 : show(int a)
//: sign g2 = 4 2 1 : n = 1
//: sign g5 = 4 2 1 : n = 1
//: sign g4 = 3 2 1 : put(const string &in a, double b)
//: sign g3 = 3 0 0 : put(int a)
