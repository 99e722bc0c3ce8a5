void leaves(int way) {
    int maybe;
    if (way > 1) maybe = 5;
    Print("");
}
int takes(int given) {
    int mine = given + 1;
    return mine;
}
void blocks(int way) {
    {
        int first;
        if (way > 1) first = 1;
        Print("");
    }
    {
        int second = 7;
        Print("");
    }
    {
        int third;
        if (way > 2) third = 3;
        Print("");
    }
}
void namesakes() {
    int8 same;
    double later;
    for (int i = 0; i < 1; i++) {
        string same = "inner";
        int later = i;
        later = 4;
    }
    Print("");
    later = 2.5;
    Print("");
}
void answers(int &out whole, bool &out flag) {
    Print("");
    whole = 3;
    Print("");
}
void begins(int way) {
    int set;
    Print("");
    if (way > 1) set = 1;
    Print("");
}
int main() {
    begins(1);
    begins(1);
    leaves(1);
    takes(4);
    blocks(2);
    namesakes();
    int a = 11;
    bool b = true;
    answers(a, b);
    return a;
}
