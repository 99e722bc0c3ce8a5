class Part {
    int number = 4;
    Part() {
        number++;
    }
    ~Part() {
        number = 0;
    }
}

class Whole {
    Part part;
    int count = 2;
    Whole() {
        count += part.number;
    }
}

void use() {
    Whole whole;
}

int main() {
    use();
    return 0;
}
