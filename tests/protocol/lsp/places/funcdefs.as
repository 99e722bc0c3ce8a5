funcdef bool /*Less*/Less(const int &in, const int &in);
class Sorter {
    funcdef void /*Done*/Done(int n);
    /*dt*/Done@ /*done*/onDone;
    /*lt*/Less@ /*less*/less;
    bool /*run*/run(int a, int b) {
        if (/*du*/onDone !is null) /*dc*/onDone(a);
        return /*lc*/less(a, b);
    }
    bool /*mine*/mine(const int &in a, const int &in b) { return a > b; }
}
bool /*down*/down(const int &in a, const int &in b) { return a > b; }
void /*told*/told(int n) { Print("" + n); }
int main() {
    Sorter s;
    @s./*lw*/less = /*dw*/down;
    @s./*ow*/onDone = /*tw*/told;
    Sorter::/*dq*/Done@ d = told;
    bool r = s./*ru*/run(1, 2);
    @s.less = Less(s./*mu*/mine);
    Less@ /*local*/local = s.less;
    return /*loc*/local(1, 2) ? 1 : 0;
}
//: def lw = less
//: def dw = down
//: def tw = told
//: def ow = done
//: def dt = Done
//: def dq = Done
//: def dc = done
//: def lc = less
//: def ru = run
//: def mu = mine
//: def loc = local
//: refs down = down dw
//: refs done = done du dc ow
//: refs Done = Done dt dq
//: rename told notify = told tw *
//: rename down descending = down dw
//: rename mine own = mine mu
//: rename less run refused
//: rename Done Finished = Done dt dq
//: hover Less : funcdef bool Less(const int &in, const int &in)
//: sign loc = -
//: symbol Less 12
