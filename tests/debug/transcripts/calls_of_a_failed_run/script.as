class Cart {
    int load = 12;
    int share(int parts) {
        int each = load / parts;
        return each;
    }
}
int divide(int parts) {
    Cart cart;
    return cart.share(parts);
}
int main() {
    int[] parts = {3, 0};
    int sum = 0;
    for (uint i = 0; i < parts.length(); i++)
        sum += divide(parts[i]);
    return sum;
}
