int main()
{
    int zero = 0;
    int[] list;
    string text = "abc";
    list[5] = 1;
    return 0;
}
