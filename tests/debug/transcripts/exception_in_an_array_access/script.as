int main() {
    int[] numbers = {1, 2};
    int index = 2;
    int value = numbers[index];
    return value;
}
