int main()
{
    SetMaxRunTime(100);
    int turns = 0;
    while (true)
        turns++;
    return 0;
}
