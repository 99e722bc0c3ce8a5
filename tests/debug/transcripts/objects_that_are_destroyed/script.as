class Stone {
    int weight = 0;
    Stone() { weight = 1; }
    Stone(int given) { weight = given; }
    ~Stone() {
        weight = -1;
    }
}
void hold() {
    Stone[] many(2);
    Stone first(3);
    Stone second(4);
    for (int i = 0; i < 2; i++) { int inner = i; inner++; }
    int plain = 5;
}
funcdef void Act();
int main() {
    hold();
    Act@ act = function() { for (int k = 0; k < 1; k++) {} Stone last(6); };
    act();
    return 0;
}
