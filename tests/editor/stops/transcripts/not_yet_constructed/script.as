int main()
{
    string text = "early";
    string later = "late";
    int[] numbers;
    return 0;
}
