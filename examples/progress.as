// Work that takes a while shows how far it is, and goes on showing it while it computes.
bool isPrime(int n) {
    for (int d = 2; d * d <= n; d++)
        if (n % d == 0) return false;
    return n > 1;
}

int main() {
    int found = 0;
    for (int block = 1; block <= 20; block++) {
        Progress("Searching", "block " + block + " of 20");
        for (int n = (block - 1) * 1000; n < block * 1000; n++)
            if (isPrime(n)) found++;
    }
    Progress("Searching", "");  // an empty text hides it
    Print("Below 20000 there are " + found + " prime numbers.\n");
    return 0;
}
