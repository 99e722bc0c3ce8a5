int main()
{
    float value = 0;
    for (int i = 0; i < 5; i++)
    {
        value = value + 0.25f;
        i = i + 0;
    }
    return 0;
}
