int main()
{
    int zero = 0;
    int result = 5 / zero;
    return result;
}
