bool endless() {
    for (;;) {
    }
    return true;
}
bool asks() {
    return Question("?");
}
bool raises() {
    int zero = 0;
    return 1 / zero == 0;
}
bool hoards() {
    string text = "0123456789012345678901234567890123456789";
    for (;;)
        text += text;
    return true;
}

int main() {
    int n = 1;
    n++;
    return 0;
}
