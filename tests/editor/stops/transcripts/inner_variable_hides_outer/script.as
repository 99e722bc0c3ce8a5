int main()
{
    int value = 1;
    {
        int value = 2;
        value += 10;
        value += 1;
    }
    value += 100;
    return value;
}
