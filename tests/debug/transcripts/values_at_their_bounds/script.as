enum Kind { Sand = 7, Clay }
class Stone { int weight = 3; Stone@ next; int heavier(int by) { return weight + by; } }
funcdef int Change(int);
int twice(int n) { return 2 * n; }

void integers() {
    int8 least8 = -128, most8 = 127;
    int16 least16 = -32768, most16 = 32767;
    int least32 = -2147483647 - 1, most32 = 2147483647;
    int64 least64 = -9223372036854775807 - 1, most64 = 9223372036854775807;
    uint8 none8 = 0, full8 = 255;
    uint16 none16 = 0, full16 = 65535;
    uint none32 = 0, full32 = 4294967295;
    uint64 none64 = 0, full64 = 18446744073709551615;
    Kind known = Clay, unknown = Kind(-5);
    Print("");
}
void reals() {
    double big = 1e308, largest = 1.7976931348623157e308, least = 4.9406564584124654e-324;
    double normal = 2.2250738585072014e-308, zero = 0.0, below = -zero, infinite = big * 10.0;
    double under = -infinite, nothing = infinite - infinite, seventh = 1.0 / 7.0, next = 0.1 + 0.2;
    float bigf = 3e38f, largestf = 3.4028235e38f, leastf = 1.4e-45f, normalf = 1.17549435e-38f;
    float zerof = 0.0f, belowf = -zerof, infinitef = bigf * 10.0f, underf = -infinitef;
    float nothingf = infinitef - infinitef, seventhf = 1.0f / 7.0f;
    Print("");
}
void texts() {
    string empty, zeros = "a\0b\0", latin = "\xe4\xff", half = "x\xc3", over = "\xc0\xaf\xed\xa0\x80";
    string mixed = "\u20ac\U0001f600\x7f\x1b\t\"\\", many;
    for (int i = 0; i < 3; i++) many += "0123456789";
    Print("");
}
void others() {
    Stone@ no, one = Stone();
    Stone@ ring = Stone();
    @ring.next = ring;
    Change@ nobody, plain = @twice, bound = Change(one.heavier);
    int[][][] deep = {{{1}, {}}, {}, {{2, 3}, {4}}};
    Stone@[] stones = {one, null};
    Change@[] changes = {plain, null, bound};
    string[][] words = {{"a", ""}, {}};
    Object form;
    form.addProperty("width", "Width", 2.5, "mm", true);
    form.addErrorConstraint("width", "width < 2", "too wide");
    Print("");
}
int main() {
    integers();
    reals();
    texts();
    others();
    return 0;
}
