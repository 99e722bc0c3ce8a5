class Shape
{
    double area() { return 0; }
}

class Square : Shape
{
    double side = 3;
    double area() override
    {
        double result = side * side;
        return result;
    }
}

int main()
{
    Shape@ shape = Square();
    double area = shape.area();
    return 0;
}
