class Stone {
    int weight;
    Stone(int given) {
        int doubled = given * 2;
        weight = doubled / (given - given);
    }
}

int main() {
    int before = 1;
    Stone stone(3);
    return 0;
}
