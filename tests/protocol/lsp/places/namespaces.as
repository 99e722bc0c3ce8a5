namespace /*outer*/outer {
    int /*limit*/limit = 5;
    int /*size*/size() { return /*lu*/limit; }
    namespace /*inner*/inner {
        int /*limit2*/limit = 7;
        int /*size2*/size() { return /*lu2*/limit + outer::/*lu3*/limit + ::/*gl*/limit; }
        class /*Box*/Box { int /*side*/side = /*lu4*/limit; }
    }
}
namespace /*outer2*/outer {
    int /*more*/more() { return /*sz*/size() + /*in*/inner::/*sz2*/size(); }
}
namespace a::/*nb*/b { const double /*kPi*/kPi = 3.25; enum /*Kind*/Kind { /*One*/One = 4, Two } }
int /*limit0*/limit = 1;
int /*size0*/size() { return 0; }
int main() {
    outer::inner::/*bt*/Box /*box*/box;
    int total = /*s0*/size() + /*o1*/outer::/*s1*/size() + outer::/*i2*/inner::/*s2*/size();
    total += /*l0*/limit + outer::/*l1*/limit + outer::inner::/*l2*/limit + box./*sd*/side;
    double p = a::b::/*pi*/kPi;
    a::b::Kind k = a::b::Kind::/*one*/One;
    a::/*b2*/b::Kind k2 = a::b::/*one2*/One;
    outer::/*off*/more();
    return total;
}
//: def s0 = size0
//: def s1 = size
//: def s2 = size2
//: def l0 = limit0
//: def l1 = limit
//: def l2 = limit2
//: def lu = limit
//: def lu2 = limit2
//: def lu3 = limit
//: def lu4 = limit2
//: def gl = limit0
//: def sz = size
//: def sz2 = size2
//: def bt = Box
//: def sd = side
//: def pi = kPi
//: def one = One
//: def one2 = One
//: def o1 = outer
//: def b2 = nb
//: refs limit = limit lu lu3 l1
//: refs limit2 = limit2 lu2 lu4 l2
//: refs limit0 = limit0 gl l0
//: refs size2 = size2 sz2 s2
//: rename limit2 bound = limit2 lu2 lu4 l2
//: rename size extent = size sz s1
//: rename limit2 size refused
//: rename kPi pi = kPi pi
//: rename limit more refused
//: hover pi : kPi = 3.25
//: hover one2 : = 4
//: hover s2 : int outer::inner::size()
//: offer off : limit size more inner !main !limit0
//: symbol outer 3
//: symbol inner 3 outer
//: symbol Box 5 inner
//: symbol kPi 13 b
