int /*v0*/v = 1;
class S {
    int /*v1*/v = 2;
    int /*read*/read() { return /*a*/v + ::/*b*/v; }
    int /*hide*/hide(int /*v2*/v) {
        int r = /*c*/v;
        { int /*v3*/v = 5; r += /*d*/v; { int /*v4*/v = /*dd*/v + 1; r += /*e*/v; } r += /*f*/v; }
        for (int /*v5*/v = 0; /*g*/v < 3; /*h*/v++) r += /*i*/v;
        return r + this./*j*/v + /*k*/v;
    }
}
int /*read0*/read() { return /*l*/v; }
int main() {
    int /*v6*/v = /*m*/read();
    if (/*n*/v > 0) { int w = /*o*/v; int /*v7*/v = w; w = /*p*/v; } else { int /*v8*/v = 3; v8(/*q*/v); }
    S s;
    return /*r*/v + s./*s*/v + s./*t*/read() + ::/*u*/v;
}
void v8(int v) {}
//: def a = v1
//: def b = v0
//: def c = v2
//: def d = v3
//: def e = v4
//: def f = v3
//: def g = v5
//: def i = v5
//: def j = v1
//: def k = v2
//: def l = v0
//: def m = read0
//: def o = v6
//: def p = v7
//: def q = v8
//: def s = v1
//: def t = read
//: def u = v0
//: refs v1 = v1 a j s
//: refs v0 = v0 b l u
//: refs v3 = v3 d f *
//: refs v5 = v5 g h i
//: refs v6 = v6 n o r *
//: rename v1 value = v1 a j s
//: rename v0 value = v0 b l u
//: rename v2 r refused
//: rename v5 r refused
//: rename v6 s refused
//: rename v0 read refused
