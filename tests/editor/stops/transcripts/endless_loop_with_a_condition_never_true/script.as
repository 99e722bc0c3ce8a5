int main()
{
    SetMaxRunTime(150);
    int turns = 0;
    while (true)
    {
        turns = (turns + 1) % 1000;
    }
    return 0;
}
