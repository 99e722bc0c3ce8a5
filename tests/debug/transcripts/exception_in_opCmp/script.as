class Stone {
    int weight;
    Stone() {}
    Stone(int w) { weight = w; }
    int opCmp(const Stone &in other) const {
        int[] none;
        return none[weight];
    }
}

int main() {
    Stone light(1);
    Stone heavy(2);
    bool less = light < heavy;
    return 0;
}
