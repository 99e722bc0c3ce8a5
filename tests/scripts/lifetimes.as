// Handles and results outlive the calls that made them.
class Keeper {
    string@ kept;
    ~Keeper() {}
}

int main() {
    Keeper@ keeper = Keeper();
    @keeper.kept = StrToUpper("first");
    string copy = keeper.kept;
    StrToLower("SECOND");
    Print(copy + " " + keeper.kept + "\n");  // expect: FIRST second
    string@[] handles;
    for (int i = 0; i < 1000; i++) handles.insertLast(StrSubstring("abcdef", i % 6, 1));
    Print("" + handles.length() + handles[0] + "\n");  // expect: 1000d
    string self = "ab";
    self += self;
    self = self + self;
    Print(self + "\n");  // expect: abababab
    @keeper = null;
    return 0;
}
