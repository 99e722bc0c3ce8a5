class Item { int /*w*/weight = 1; Item@[] /*kids*/kids; array<Item@>@ /*all*/all() { return /*ku*/kids; } }
array<int> /*nums*/nums = {1, 2, 3};
array<array<Item@>> /*grid*/grid;
int[] /*plain*/plain(3);
int sum(const int[] &in /*l*/list) { int s = 0; for (uint /*i*/i = 0; /*iu*/i < /*lu*/list./*len*/length(); /*iu2*/i++) s += list[/*iu3*/i]; return s; }
int main() {
    Item@[] /*items*/items;
    /*iu4*/items./*ins*/insertLast(/*ctor*/Item());
    items[0]./*k1*/kids.insertLast(Item());
    int r = items[0].kids[0]./*w1*/weight + items[0].all()[0]./*w2*/weight;
    grid.resize(1);
    grid[0].insertLast(items[0]);
    r += /*gu*/grid[0][0]./*w3*/weight + sum(/*nu*/nums) + plain[0];
    const auto @first = items[0];
    auto /*copy*/copy = nums;
    for (uint /*i2*/i = 0; /*i2u*/i < 2; i++) r += copy[/*i2v*/i];
    dictionaryLike(/*arg*/items);
    items./*off*/resize(2);
    return r;
}
void dictionaryLike(array<Item@>@ list) {}
//: def w1 = w
//: def w2 = w
//: def w3 = w
//: def k1 = kids
//: def len = -
//: def ins = -
//: def gu = grid
//: def iu3 = i
//: def i2v = i2
//: def lu = l
//: refs i = i iu iu2 iu3
//: refs w = w w1 w2 w3
//: refs items = items iu4 arg *
//: rename i k = i iu iu2 iu3
//: rename i list refused
//: rename i s refused
//: rename ins append refused
//: rename w heft = w w1 w2 w3
//: hover copy : int[]
//: hover ins : insertLast
//: hover items : Item@[] items
//: offer off : length insertLast resize !opIndex !weight
//: tdef items = -
