class Seam {}
int main() {
    Seam seam;
    Seam@ none;
    return 0;
}
