// input: word 0x1F 010 2.5
// input: 1e3 notanumber 99999999999 -7
int main() {
    string word;
    int hexadecimal, octal, large, last, failed = 5;
    double real;
    float single;
    Input(word);
    Input(hexadecimal);
    Input(octal);
    Input(real);
    Input(single);
    Input(failed);
    Print(word + " " + hexadecimal + " " + octal + "\n");  // expect: word 31 8
    Print("" + real + " " + single + "\n");                // expect: 2.5 1000
    Print("" + failed + "\n");                             // expect: 0
    Input(word);
    Print(word + "\n");  // expect: notanumber
    Input(large);
    Input(last);
    Print("" + large + " " + last + "\n");  // expect: 2147483647 -7
    Input(word);
    Print("[" + word + "]\n");  // expect: []
    return 0;
}
