int value = 100;
int main() {
    for (int i = 0; i < 1; i++)
        value += i;
    int value = 1;
    {
        int value = 2;
        {
            string value = "three";
            ::value++;
        }
        value++;
    }
    for (int i = 7; i < 8; i++)
        value += i;
    return 0;
}
