class Well
{
    string name;
    double depth;

    Well(const string &in wellName, double wellDepth)
    {
        name = wellName;
        depth = wellDepth;
    }

    double deepen(double by)
    {
        depth += by;
        return depth;
    }
}

int main()
{
    Well well("DH-1", 120.5);
    double depth = well.deepen(10);
    return 0;
}
