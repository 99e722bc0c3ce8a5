enum Kind { Sand = 1, Clay }
void give(int &out value) {
    value = 12;
}
int pick(int way, int deep) {
    int some;
    int8 other;
    Kind kind;
    double both;
    if (way == 1)
        some = 7;
    if (way > 1) { give(some); other = -3; }
    if (way == 0) both = 0.5; else both = 1.5;
    for (int i = 0; i < way; i++) {
        bool found;
        if (i == 1) found = true;
        Print("");
    }
    switch (way) { case 2: kind = Clay; break; default: break; }
    Print("");
    if (deep > 0) pick(way - 1, deep - 1);
    return way;
}
int main() {
    pick(2, 2);
    int never;
    bool no = false;
    if (no) never = 1;
    try { never = pick(0, 0) / (2 - pick(2, 0)); } catch { Print(""); }
    return 0;
}
