int main()
{
    int value = 1
    value += missing;
    undefined();
    return value;
}
