// A script may run for ten seconds without waiting for its user; SetMaxRunTime changes that.
// This one never ends by itself, so it is ended after 300 ms.
// Ends with exit code 1.
int main() {
    SetMaxRunTime(300);
    uint start = GetSystemTime();
    int rounds = 0;
    bool told = false;
    while (true) {
        rounds++;
        if (!told && GetSystemTime() - start >= 100) {
            Print("Still running after a tenth of a second.\n");
            told = true;
        }
    }
    return 0;
}
