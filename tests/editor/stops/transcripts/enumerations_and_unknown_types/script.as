enum Colour { red, green }
funcdef int Callback(int);
int twice(int a) { return a * 2; }

int main()
{
    Colour colour = green;
    Callback@ call = @twice;
    Object form;
    Colour[] colours = {red};
    int done = call(2);
    return done;
}
