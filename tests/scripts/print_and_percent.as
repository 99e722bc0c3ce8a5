int main() {
    Print("50%% done\n");              // expect: 50% done
    Print("%d %s %n %5.2f\n");         // expect: %d %s %n %5.2f
    Print("%%%\n");                    // expect: %%
    string text = "100%%\n";
    Print(text);                       // expect: 100%
    Print("a" + 1 + 2.5 + -3 + "\n");  // expect: a12.5-3
    Print("\tcafé\n");                 // expect: 	café
    return 0;
}
