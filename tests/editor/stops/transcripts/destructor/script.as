int destroyed = 0;

class Guard
{
    ~Guard()
    {
        destroyed += 1;
    }
}

int main()
{
    {
        Guard guard;
    }
    int seen = destroyed;
    return seen;
}
