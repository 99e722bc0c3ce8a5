int first = 1;
int second = first + 1;
string text = "t" + second;

int main()
{
    int sum = first + second;
    return sum;
}
