int main()
{
    int total = 0;
    for (int i = 0; i < 3; i++)
    {
        total += i;
        total += 10;
    }
    return total;
}
