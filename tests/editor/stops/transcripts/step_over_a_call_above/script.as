int square(int number)
{
    int result = number * number;
    return result;
}

int sumOfSquares(int first, int second)
{
    int sum = square(first);
    sum += square(second);
    return sum;
}

int main()
{
    int answer = sumOfSquares(3, 4);
    answer += 1;
    return answer;
}
