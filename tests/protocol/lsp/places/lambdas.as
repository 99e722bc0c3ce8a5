funcdef int /*Op*/Op(int /*a*/a, int b);
funcdef void /*Plain*/Plain();
int /*total*/total = 0;
int /*apply*/apply(/*ot*/Op@ /*op*/op, int /*x*/x) { return /*opu*/op(/*xu*/x, 2); }
int /*add*/add(int a, int b) { return a + b; }
class Counter {
    int /*n*/n = 0;
    int /*step*/step(int a, int b) { /*nu*/n += a * b; return n; }
}
int main() {
    int /*shade*/shade = 1;
    /*ot2*/Op@ /*f*/f = function(/*la*/l, r) { return /*lu*/l * r + /*tu*/total; };
    Op@ g = @/*au*/add;
    Counter c;
    Op@ h = /*ot3*/Op(c./*su*/step);
    int y = /*fu*/f(1, 2) + /*ap*/apply(g, 3) + apply(function(int /*p*/p, int q) { int /*in*/shade = /*pu*/p; return /*inu*/shade + q; }, /*four*/4) + /*sh*/shade;
    /*tw*/total = y + h(1, 1);
    return total;
}
//: def ap = apply
//: def au = add
//: def su = step
//: def fu = f
//: def opu = op
//: def lu = la
//: def pu = p
//: def inu = in
//: def sh = shade
//: def ot = Op
//: def ot3 = Op
//: def tu = total
//: refs Op = Op ot ot2 ot3 *
//: refs add = add au
//: refs step = step su
//: refs shade = shade sh
//: refs la = la lu
//: rename p value2 = p pu
//: rename la total refused
//: rename shade f refused
//: rename in p refused
//: rename step advance = step su
//: rename add apply refused
//: hover ap : int apply(Op@ op, int x)
//: hover f : Op@ f
//: hover Op : funcdef int Op(int a, int b)
//: symbol Op 12
//: sign four = 1 0 1 : int x
