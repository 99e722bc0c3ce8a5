enum /*Rock*/Rock { /*Sand*/Sand = 1, /*Gravel*/Gravel = 7, /*Clay*/Clay, /*Both*/Both = /*gu*/Gravel + 2 }
enum /*Sign*/Sign { /*Minus*/Minus = -3, Zero = 0, /*Big*/Big = 0x10 }
const int /*kMany*/kMany = 40;
const double /*kHalf*/kHalf = 0.5, /*kThird*/kThird = 1.0 / 3;
int rate(/*rt*/Rock /*r*/r) {
    switch (/*ru*/r) {
        case /*s1*/Sand: return 1;
        case /*rq*/Rock::/*g1*/Gravel: return 2;
        case /*c1*/Clay: return 3;
        default: return int(Sign::/*m1*/Minus);
    }
    return 0;
}
int main() {
    Rock rock = /*g2*/Gravel;
    Rock other = /*rv*/Rock(7);
    int n = rate(/*c2*/Clay) + rate(Rock(3)) + /*km*/kMany + int(/*kh*/kHalf) + int(kThird) + /*big*/Big;
    return n + Rock::/*off*/Sand;
}
//: def g1 = Gravel
//: def g2 = Gravel
//: def gu = Gravel
//: def rt = Rock
//: def rq = Rock
//: def rv = Rock
//: def m1 = Minus
//: refs Gravel = Gravel gu g1 g2
//: refs Clay = Clay c1 c2
//: refs kMany = kMany km
//: rename Gravel Pebbles = Gravel gu g1 g2
//: rename Clay Sand refused
//: rename Clay Loam = Clay c1 c2
//: rename r kMany = r ru
//: rename kMany Clay refused
//: rename r Sand refused
//: hover g2 : Rock::Gravel = 7
//: hover c1 : = 8
//: hover Both : = 9
//: hover m1 : = -3
//: hover big : = 16
//: hover km : const int kMany = 40
//: hover kh : = 0.5
//: hover rt : enum Rock
//: offer off : Sand Gravel Clay Both !Minus !main
//: symbol Rock 10
//: symbol Clay 22 Rock
//: symbol kMany 13
