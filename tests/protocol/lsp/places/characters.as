// 𝄞 clef é
string /*g*/clef = "𝄞𝄞";	int /*n*/n = 1;
	int /*f*/f(string 	/*p*/p) {	/* 😀 */ return int(/*pu*/p.length()) + /*nu*/n; }
int main() {
	string /*s*/s = "é€😀" + /*gu*/clef; int /*r*/r = /*fu*/f("😀" + /*su*/s) /* 𝄞 */ + /*nu2*/n;
	return /*ru*/r;
}
//: def gu = g
//: def fu = f
//: def su = s
//: def pu = p
//: def ru = r
//: refs n = n nu nu2
//: refs s = s su
//: rename g note = g gu
//: rename f fun = f fu
//: rename r s refused
//: hover fu : int f(string p)
//: symbol clef 13
