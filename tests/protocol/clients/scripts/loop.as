int main() {
    SetMaxRunTime(60000);
    int i = 0;
    while (true) {
        i++;
    }
    return 0;
}
