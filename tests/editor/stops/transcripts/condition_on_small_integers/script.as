int main()
{
    int8 value = 0; int64 wide = 4294967296;
    for (int i = 0; i < 5; i++)
    {
        value = value + 1; wide = wide + 1;
        i = i + 0;
    }
    return 0;
}
