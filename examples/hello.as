// The smallest useful script: every script begins in int main().
int main() {
    Print("Hello from a script.\n");

    // Two percent signs print one.
    Print("Done to 100%%.\n");
    return 0;
}
