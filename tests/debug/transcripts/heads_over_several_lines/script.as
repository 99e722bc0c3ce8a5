void empty() {
}

int main() {
    int sum = 0;
    for (int i = 0;
         i < 2;
         i++)
        sum += i;
    empty();
    return sum;
}
