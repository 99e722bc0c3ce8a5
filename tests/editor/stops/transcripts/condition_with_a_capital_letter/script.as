int main()
{
    int Value = 0;
    for (int i = 0; i < 5; i++)
    {
        Value = Value + 1;
        i = i + 0;
    }
    return 0;
}
