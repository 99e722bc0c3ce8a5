int depth = 1;
namespace pit {
int depth = 3;
void dig() {
    depth++;
    ::depth += 10;
}
}
int main() {
    pit::dig();
    depth++;
    return 0;
}
