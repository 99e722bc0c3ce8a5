// Numbers: whole and real ones, the mathematical functions, and Bessel functions.
string padded(string text, uint width) {
    while (text.length() < width) text = " " + text;
    return text;
}

// Rounded to a number of decimals, as a text.
string rounded(double value, int decimals) {
    double scale = pow(10, decimals);
    double whole = floor(fabs(value) * scale + 0.5);
    string digits = "" + int(fmod(whole, scale));
    while (int(digits.length()) < decimals) digits = "0" + digits;
    return (value < 0 ? "-" : "") + int(whole / scale) + (decimals > 0 ? "." + digits : "");
}

int main() {
    Print("7 / 2 is " + (7 / 2) + ", but 7 / 2.0 is " + (7 / 2.0) + "\n");
    Print("The root of 2 is " + sqrt(2) + ", rounded " + rounded(sqrt(2), 3) + "\n");
    Print("A slope of 1 in 3 has " + rounded(atan(1.0 / 3) * 180 / acos(-1), 1) + " degrees\n");
    Print("Large numbers: " + 1e6 + " " + pow(10, 20) + "\n\n");

    // The flow to a well and the swing of a drum are made of these.
    Print("   x      j0      j1      y0      j2\n");
    for (double x = 0.5; x <= 3; x += 0.5)
        Print(padded(rounded(x, 1), 4) + padded(rounded(j0(x), 4), 8) +
              padded(rounded(j1(x), 4), 8) + padded(rounded(y0(x), 4), 8) +
              padded(rounded(jn(2, x), 4), 8) + "\n");
    return 0;
}
