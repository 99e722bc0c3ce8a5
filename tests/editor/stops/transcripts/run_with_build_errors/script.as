int main()
{
    int value = unknown;
    return other;
}
