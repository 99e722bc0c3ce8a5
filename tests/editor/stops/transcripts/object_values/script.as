class internal { int number = 1; }
class stringer { string text = "x"; }
class boolean { bool flag = true; }

int main()
{
    internal first;
    stringer second;
    boolean third;
    internal@ none;
    internal@ handle = @first;
    internal[] list(2);
    int done = 1;
    return done;
}
