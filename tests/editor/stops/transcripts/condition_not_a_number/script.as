int main()
{
    double value = 1;
    for (int i = 0; i < 2; i++)
        value = log(value - 2);
    value = 0;
    return 0;
}
