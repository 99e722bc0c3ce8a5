int main()
{
    int[] numbers = {1, 2};
    uint[] none;
    double[] reals = {0.5, 1e10};
    string[] texts = {"a", ""};
    bool[] flags = {true, false};
    int8[] bytes = {1, 2, 3, 4, 5};
    int16[] words = {1, 2, 3};
    int64[] longs = {-1, 4294967296};
    int[][] nested = {{1, 2}, {}, {3}};
    int done = 0;
    return done;
}
