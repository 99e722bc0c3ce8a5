int main()
{
    int value = 1;
    value += ;
    return value;
}
