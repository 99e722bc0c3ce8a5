int main() {
    int zero = 0;
    int seen = 0;
    try {
        seen = 1 / zero;
    } catch {
        seen = 2;
        int again = seen / zero;
    }
    return 0;
}
