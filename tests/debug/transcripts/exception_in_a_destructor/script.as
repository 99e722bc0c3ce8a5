class Stone {
    int weight = 5;
    ~Stone() {
        int zero = weight - 5;
        weight = 1 / zero;
    }
}

void hold() {
    Stone stone;
    int inner = 2;
}

int main() {
    int outer = 1;
    hold();
    Print("still here\n");
    return 0;
}
