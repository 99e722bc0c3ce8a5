class Box {
    int size = 3;
    int get_side() const property {
        int zero = size - 3;
        return size / zero;
    }
}

int main() {
    Box box;
    int side = box.side;
    return 0;
}
