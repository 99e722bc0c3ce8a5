class Animal { int /*legs*/legs = 4; }
class /*Dog*/Dog : Animal { void /*bark*/bark() {} int /*age*/age = 1; }
class Cat : Animal { void /*meow*/meow() {} }
interface Pet { void /*pet*/pet(); }
class Fish : Pet { void /*pet2*/pet() {} int /*fins*/fins = 2; }
Animal@ find(int n) { if (n == 0) return Dog(); return Cat(); }
int main() {
    Animal@ /*a*/a = find(0);
    /*dt*/Dog@ /*d*/d = cast</*dc*/Dog>(/*au*/a);
    cast<Cat@>(find(1))./*mu*/meow();
    cast<Dog>(a)./*bu*/bark();
    if (d !is null) /*du*/d./*ag*/age = int(2.5) + int8(3);
    Pet@ p = Fish();
    p./*pu*/pet();
    int n = cast<Fish@>(p)./*fu*/fins + (cast<Dog@>(a)).age + (a is null ? 0 : a./*lu*/legs);
    auto@ q = cast<Dog@>(a);
    q./*bu2*/bark();
    auto r = double(n) + float(q./*ag2*/age);
    return int(r) + cast<Dog>(a)./*off*/age;
}
//: def mu = meow
//: def bu = bark
//: def dc = Dog
//: def bu2 = bark
//: def fu = fins
//: def lu = legs
//: def ag2 = age
//: def pu = pet
//: def au = a
//: refs bark = bark bu bu2
//: refs a = a au *
//: rename bark woof = bark bu bu2
//: rename fins tails = fins fu
//: rename a d refused
//: hover bu2 : void Dog::bark()
//: offer off : age bark legs !meow
//: tdef d = Dog
