int main()
{
    double value = 0;
    for (int i = 0; i < 5; i++)
    {
        value = value + 0.5;
        i = i + 0;
    }
    return 0;
}
