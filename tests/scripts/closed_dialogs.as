// error: korvant: Question: Go on?
// error: no terminal to ask on
int main() {
    Print(Question("Go on?") ? "yes\n" : "closed\n");  // expect: closed
    Print("" + Prompt("Holes", 12) + "\n");            // expect: 12
    Print("" + Prompt("Depth", 0.5) + "\n");           // expect: 0.5
    string name = Prompt("Name", "DH-1");
    Print(name + "\n");  // expect: DH-1
    Progress("Working", "half");
    return 0;
}
