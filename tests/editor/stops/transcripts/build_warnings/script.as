int main()
{
    int value = 3.7;
    uint other = -1;
    return value;
}
