void fill(int &out number, const string &in text, int[] &in list, double factor)
{
    number = 5;
    number += 1;
}

int main()
{
    int number = 0;
    int[] list = {7};
    fill(number, "given", list, 2.5);
    return number;
}
