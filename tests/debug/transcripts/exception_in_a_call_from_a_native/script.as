class Scale {
    int zero = 0;
    int weigh(int stone) {
        int shown = stone * 10;
        return shown / zero;
    }
}
Scale scale;
int compare(int a, int b) {
    int difference = scale.weigh(a) - scale.weigh(b);
    return difference;
}
bool less(const int &in a, const int &in b) {
    bool isLess = compare(a, b) < 0;
    return isLess;
}

int main() {
    int[] stones = {3, 1};
    stones.sort(less);
    return 0;
}
