// Questions to the user. With nobody there to answer, each is taken as closed: Question gives
// false, and Prompt the value that was offered.
int main() {
    Information("This script plans a drilling campaign.");

    int holes = Prompt("Number of holes", 12);
    double depth = Prompt("Depth of each in m", 150.0);
    string site = Prompt("Name of the site", "North Ridge");

    double cost = holes * depth * 85;
    Print(site + ": " + holes + " holes of " + depth + " m cost " + cost + "\n");

    if (cost > 100000) Warning("That is above the budget.");
    if (Question("Write the plan to plan.txt?")) {
        OpenOutputFile("plan.txt");
        Print(site + " " + holes + " " + depth + "\n");
        CloseOutputFile();
        Print("Written.\n");
    } else {
        Print("Nothing was written.\n");
    }
    return 0;
}
