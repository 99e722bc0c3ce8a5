int main()
{
    int integer = -7;
    uint whole = 4000000000;
    float single = 1.5f;
    double real = 1.0 / 3;
    double big = 1e300;
    double million = 1234567;
    bool yes = true;
    bool no = false;
    string text = "hello \"you\"";
    string empty;
    int8 small = -1;
    int16 medium = -2;
    int64 large = 4294967303;
    uint8 byte = 255;
    uint64 huge = 18446744073709551615;
    int done = 0;
    return done;
}
