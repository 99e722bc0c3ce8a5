mixin class /*Tagged*/Tagged {
    string /*tag*/tag = "t";
    void /*mark*/mark(const string &in t) { /*tagu*/tag = t; /*hook*/hook(); }
    void /*hookm*/hook() { own = 1; }
    int /*ownm*/own;
}
class A : /*mb*/Tagged {
    void /*hooka*/hook() { /*tagi*/tag += "a"; }
}
class B : Tagged {
    int /*extra*/extra = 2;
}
int main() {
    A a;
    B b;
    a./*u1*/mark("x");
    b./*u2*/mark("y");
    b./*h*/hook();
    a./*ha*/hook();
    Print(a./*u3*/tag + b./*u4*/tag + b./*e*/extra);
    return 0;
}
//: def u1 = mark
//: def u2 = mark
//: def u3 = tag
//: def tagi = tag
//: def mb = Tagged
//: def h = hookm
//: def ha = hooka
//: refs tag = tag tagu tagi u3 u4
//: refs mark = mark u1 u2
//: rename tag label = tag tagu tagi u3 u4
//: rename mark markIt = mark u1 u2
//: rename extra tag refused
//: rename hooka onMark = hook hookm hooka h ha
//: hover u1 : void Tagged::mark(const string &in t)
//: offer e : extra tag mark hook
//: symbol Tagged 5
//: symbol tag 8 Tagged
