int main()
{
    bool value = false;
    for (int i = 0; i < 5; i++)
    {
        value = i >= 3;
        i = i + 0;
    }
    return 0;
}
