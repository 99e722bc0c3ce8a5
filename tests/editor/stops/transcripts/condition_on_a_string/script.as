int main()
{
    string value = "a";
    for (int i = 0; i < 5; i++)
    {
        value = value + "a";
        i = i + 0;
    }
    return 0;
}
