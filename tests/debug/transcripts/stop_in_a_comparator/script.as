bool less(const int &in a, const int &in b) {
    bool answer = a < b;
    return answer;
}

int main() {
    int[] numbers = {2, 1};
    numbers.sort(less);
    Print("" + numbers[0] + numbers[1] + "\n");
    return 0;
}
