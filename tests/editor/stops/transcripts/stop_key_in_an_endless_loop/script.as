int main()
{
    int turns = 0;
    while (true)
    {
        turns = (turns + 1) % 1000;
    }
    return 0;
}
