int main() {
    int count = 0;
    Print("How many?\n");
    Input(count);
    Print("got " + count + "\n");
    return 0;
}
