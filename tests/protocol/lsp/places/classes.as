// A hole in the ground.
class /*Hole*/Hole {
    string /*name*/name;
    private double /*depth*/depth = 0;
    protected int /*count*/count;
    /*ctor*/Hole() { /*w1*/name = "new"; }
    /*ctor2*/Hole(const string &in /*p*/name, double /*d*/d) {
        this./*w2*/name = /*pu*/name;
        this./*w3*/depth = /*du*/d;
    }
    ~/*dtor*/Hole() {}
    /// How deep it is.
    double /*get*/depthOf() const { return /*r1*/depth; }
    void /*deepen*/deepen(double /*by*/by) { /*c1*/depth += /*byu*/by; /*cc*/count++; /*self*/deepen2(); }
    void /*deepen2*/deepen2() { this./*c2*/deepen(1); }
}
/*ret*/Hole@ make() { return /*call*/Hole("a", 2); }
int main() {
    /*t1*/Hole /*h*/h;
    /*t2*/Hole@ /*g*/g = /*call2*/Hole();
    /*hu*/h./*m1*/deepen(/*sg*/2);
    g./*n1*/name = "x" + make()./*n2*/name;
    /*t3*/Hole[] list(3);
    list[1]./*m2*/deepen(list[0]./*m3*/depthOf());
    /*print*/Print(/*hu2*/h./*n3*/name);
    g./*offer*/deepen(1);
    return 0;
}
//: def t1 = Hole
//: def call = Hole
//: def call2 = Hole
//: def m1 = deepen
//: def c2 = deepen
//: def self = deepen2
//: def w1 = name
//: def w2 = name
//: def pu = p
//: def n2 = name
//: def m3 = get
//: def hu = h
//: def print = -
//: refs name = name w1 w2 n1 n2 n3
//: refs depth = depth w3 r1 c1
//: refs Hole = Hole ctor ctor2 dtor ret call t1 t2 call2 t3
//: refs t2 = Hole ctor ctor2 dtor ret call t1 t2 call2 t3
//: refs deepen = deepen c2 m1 m2 offer
//: refs p = p pu
//: refs h = h hu hu2
//: rename ctor Bore = Hole ctor ctor2 dtor ret call t1 t2 call2 t3
//: rename dtor Bore = Hole ctor ctor2 dtor ret call t1 t2 call2 t3
//: rename p label = p pu
//: rename d depth = d du
//: rename h g refused
//: rename count depth refused
//: rename name deepen refused
//: rename h Hole refused
//: rename by depth refused
//: rename h 5x refused
//: rename h while refused
//: rename print Say refused
//: hover m1 : void Hole::deepen(double by)
//: hover get : How deep it is
//: hover Hole : A hole in the ground
//: hover hu : Hole h
//: hover pu : const string &in name
//: hover print : Writes the text
//: sign sg = 1 0 0 : deepen(double by)
//: offer offer : name deepen depthOf !depth !count !Print
//: tdef hu = Hole
//: tdef g = Hole
//: symbol Hole 5
//: symbol name 8 Hole
//: symbol deepen 6 Hole
//: symbol main 12
