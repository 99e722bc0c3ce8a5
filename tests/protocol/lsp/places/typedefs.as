typedef double /*Length*/Length;
typedef uint8 Byte;
/*l1*/Length /*perimeter*/perimeter(/*l2*/Length /*a*/a, Byte n) { return /*au*/a * n; }
class Field { /*l3*/Length /*side*/side = 2; }
int main() {
    /*l4*/Length /*l*/l = /*p1*/perimeter(2.5, 4);
    Field f;
    f./*s1*/side = /*lu*/l;
    auto /*x*/x = f./*s2*/side;
    return int(x + /*l5*/Length(3));
}
//: def l1 = Length
//: def l4 = Length
//: def l5 = Length
//: def p1 = perimeter
//: def s1 = side
//: refs Length = Length l1 l2 l3 l4 l5
//: refs side = side s1 s2
//: refs a = a au
//: rename l1 Distance = Length l1 l2 l3 l4 l5
//: rename Length Field refused
//: rename l f refused
//: rename x distance = x *
//: hover x : double x
//: hover p1 : Length perimeter(Length a, Byte n)
//: hover Length : typedef double Length
