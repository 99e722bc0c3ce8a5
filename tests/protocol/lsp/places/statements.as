int /*n*/n = 0;
int /*twice*/twice(int /*x*/x) { return x * 2; }
int main() {
    int /*i*/i = 0, /*j*/j = /*iu*/i + 1;
    do { int /*k*/k = /*ju*/j; i += /*ku*/k; } while (/*iw*/i < 10);
    while (/*iv*/i > 0) { if (i == 3) break; else if (/*ii*/i == 4) { i--; continue; } --/*id*/i; }
    switch (i) { case 0: { int /*s*/s = 1; n = /*su*/s; break; } default: n = /*tw*/twice(/*ic*/i); }
    for (int /*a*/a = 0, /*b*/b = 10; /*au*/a < /*bu*/b; /*ai*/a++, /*bd*/b--) { n += a; }
    try { throw2(); } catch { /*nc*/n = 5; }
    const int /*t*/t = n > 0 ? /*t1*/twice(n) : /*t2*/twice(-n);
    Print("i " + n + " // not " + /*tu*/t); // the n of i, twice
    /* n, i and twice */
    return /*nr*/n;
}
void throw2() {}
//: def iu = i
//: def ju = j
//: def ku = k
//: def su = s
//: def tw = twice
//: def t1 = twice
//: def bu = b
//: def bd = b
//: refs k = k ku
//: refs a = a au ai *
//: refs twice = twice tw t1 t2
//: refs t = t tu
//: rename twice double2 = twice tw t1 t2
//: rename k j refused
//: rename a b refused
//: rename a n refused
//: rename i j refused
//: rename t tt = t tu
//: rename k kk = k ku
//: rename x n = *
//: hover t : const int t
