class Stone {
    int[] cuts = {1};
}
int[] kept = {9, 9};
namespace pit { array<string> words = {"a"}; }
int main() {
    int[] list = {1, 2, 3};
    int[] other = {7};
    const int[] fixed = {4};
    int[]@ hold = list;
    const int[]@ look = list;
    int[][] grid = {{1}, {2}};
    string[] names = {"x"};
    Stone stone;
    Stone@[] handles(2);
    Print("list " + list.length() + ", " + list[0] + ", other " + other[0] + "\n");
    return 0;
}
