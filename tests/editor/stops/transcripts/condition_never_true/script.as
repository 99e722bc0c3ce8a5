int main()
{
    int value = 0;
    for (int i = 0; i < 5; i++)
    {
        value = value + 1;
        i = i + 0;
    }
    return 0;
}
