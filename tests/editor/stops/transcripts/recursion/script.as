int factorial(int n)
{
    if (n < 2)
        return 1;
    int below = factorial(n - 1);
    return n * below;
}

int main()
{
    return factorial(3);
}
