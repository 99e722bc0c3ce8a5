int main() {
    double /*d*/d = /*sqrt*/sqrt(/*g*/2.0) + /*sin*/sin(/*g2*/1);
    string /*s*/s = "a,b";
    /*su*/s./*find*/resize(/*g3*/3);
    int n = s./*len*/length();
    Object /*o*/o;
    /*print*/Print(s.opAdd(/*g4*/"") + pow(2, /*g5*/3));
    array</*st*/string> list;
    list./*ins*/insertLast(/*g6*/s);
    return n;
}
//: def sqrt = -
//: def find = -
//: def len = -
//: def ins = -
//: def print = -
//: def su = s
//: hover sqrt : sqrt(
//: hover find : resize(
//: hover len : length()
//: hover print : Print(
//: hover ins : insertLast(
//: rename sqrt root refused
//: rename find seek refused
//: rename st text refused
//: rename d s refused
//: rename d Print refused
//: sign g = 1 0 0 : sqrt(
//: sign g3 = 1 0 0 : resize(
//: sign g5 = 1 0 1 : pow(
//: sign g6 = 1 0 0 : insertLast(
//: offer len : length resize !opAdd !Print
//: offer print : Print d s n sqrt string main int
