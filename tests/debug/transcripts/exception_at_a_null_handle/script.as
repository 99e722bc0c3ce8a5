class Stone { int weight = 3; }

int main() {
    Stone@ stone;
    Stone other;
    int weight = stone.weight;
    return 0;
}
