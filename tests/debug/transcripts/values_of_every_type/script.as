enum Stone { Gravel = 7, Granite }
class Base { int inherited = 1; private int hidden = 5; protected string prot = "p"; int peek() { return hidden; } }
class Derived : Base { double own = 0.1; Base@ next; Derived@ self; }
interface Shape { int sides(); }
class Square : Shape { int sides() { return 4; } }
funcdef int Binary(int, int);
int add(int a, int b) { return a + b; }
class Counter { int n = 3; int next(int a, int b) { return n + a; } }
namespace deep { int level = 2; class Inner { int x = 4; } }

int main() {
    int8 i8 = -128; int16 i16 = -32768; int i32 = -2147483647 - 1; int64 i64 = -9223372036854775807 - 1;
    uint8 u8 = 255; uint16 u16 = 65535; uint u32 = 4294967295; uint64 u64 = 18446744073709551615;
    int8 j8 = 127; int16 j16 = 32767; int j32 = 2147483647; int64 j64 = 9223372036854775807;
    float f = 0.1f; double d = 0.1; double big = 1e300; double third = 1.0 / 3.0; float tiny = 1e-45f;
    bool yes = true, no = false;
    Stone stone = Gravel; Stone other = Stone(99);
    string text = "a\"b\\c\n\t\x01\xff\u00e9";
    string empty;
    Base@ none; Base@ held = Derived(); const Base@ fixed = held; Derived derived;
    @derived.next = held;
    @derived.self = derived;
    Shape@ shape = Square();
    Binary@ plain = @add; Binary@ nobody; Counter counter; Binary@ bound = Binary(counter.next);
    Binary@ lambda = function(a, b) { return a * b; };
    int[] numbers = {1, 2, 3}; int[][] nested = {{1}, {2, 3}, {}}; string[] words = {"x", "y"};
    Base@[] handles = {held, null}; int[] nothing;
    deep::Inner inner;
    bool[] flags = {true, false};
    const int fixedNumber = 12;
    i8 = i8;
    return 0;
}
