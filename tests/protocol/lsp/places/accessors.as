class Tank {
    private int /*f*/fill = 0;
    int /*get*/get_level() const property { return /*fu*/fill; }
    void /*set*/set_level(int value) property { /*fw*/fill = value; }
    int /*cap*/capacity {
        get const { return /*fr*/fill * 2; }
        set { /*fs*/fill = /*val*/value / 2; }
    }
    int get_cell(uint /*i*/i) const property { return fill + i; }
    void refill() { /*lv*/level = 3; /*ca*/capacity = 4; this./*lt*/level += 1; }
}
int /*global*/global_ { get { return 5; } }
int /*wide*/get_wide() property { return 6; }
int main() {
    Tank t;
    t./*l1*/level = 4;
    t./*c1*/capacity = t./*l2*/level + t./*c2*/capacity;
    int v = /*wu*/wide + t./*cell*/cell[2] + /*gu*/global_;
    return v + t./*off*/level;
}
//: def l1 = set
//: def l2 = get
//: def lv = set
//: def c1 = cap
//: def c2 = cap
//: def ca = cap
//: def gu = global
//: def wu = wide
//: refs cap = cap ca c1 c2
//: refs f = f fu fw fr fs *
//: rename c1 room = cap ca c1 c2
//: rename l1 height refused
//: rename val amount refused
//: rename f level refused
//: rename cap level refused
//: hover c1 : int Tank::capacity
//: hover l2 : get_level
//: offer off : capacity refill level !fill
//: symbol capacity 7 Tank
