class Rock {
    int id = 7;
    string name = "basalt";
    int weigh(int divisor) {
        int local = 5;
        return local / divisor;
    }
}

Rock@ kept;
int count = 3;

int main() {
    Rock rock;
    @kept = rock;
    int[] numbers = {1, 2, 3};
    int zero = 0;
    rock.weigh(zero);
    return 0;
}
