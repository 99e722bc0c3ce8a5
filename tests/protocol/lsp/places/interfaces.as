interface /*Named*/Named {
    string /*nameOf*/nameOf();
    int /*size0*/get_size() const;
}
interface /*Weighed*/Weighed : /*nb*/Named {
    double /*weight*/weight(double /*g*/g);
}
class /*Stone*/Stone : /*wb*/Weighed {
    string /*nameOf2*/nameOf() { return "stone"; }
    int get_size() const { return 2; }
    double /*weight2*/weight(double g) { return 2 * g; }
}
class /*Sand*/Sand : /*nb2*/Named {
    string /*nameOf3*/nameOf() { return "sand"; }
    int get_size() const { return 1; }
    double /*other*/weight(double g) { return g; }
}
double lift(/*wt*/Weighed@ /*w*/w) { return w./*u1*/weight(9.81) + w./*u2*/nameOf().length(); }
int main() {
    Stone /*s*/s;
    Sand d;
    /*nt*/Named@ n = d;
    Print(n./*u3*/nameOf() + s./*u4*/nameOf() + d./*u5*/weight(1));
    return int(lift(/*su*/s)) + n./*size*/get_size();
}
//: def u1 = weight
//: def u2 = nameOf
//: def u3 = nameOf
//: def u4 = nameOf2
//: def u5 = other
//: def nb = Named
//: def wt = Weighed
//: refs nameOf = nameOf nameOf2 nameOf3 u2 u3 u4
//: refs weight2 = weight weight2 u1
//: refs other = other u5
//: refs Named = Named nb nb2 nt
//: rename u4 title = nameOf nameOf2 nameOf3 u2 u3 u4
//: rename weight2 mass = weight weight2 u1
//: rename other weightOf = other u5
//: rename weight nameOf = weight weight2 u1
//: rename Stone Sand refused
//: hover wt : interface Weighed
//: hover u1 : double Weighed::weight(double g)
//: hover w : Weighed@ w
//: impl weight = weight2
//: impl Named = Weighed Stone Sand
//: tdef w = Weighed
//: symbol Named 11
//: def size = size0
//: symbol nameOf 6 Named
