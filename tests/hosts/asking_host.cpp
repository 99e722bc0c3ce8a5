// A host that makes no script engine and asks all the same: its boxes and prompts are windows.
#include "hosts/host_common.h"
#include "korvantide/script_object.h"

int main() {
    const host::User user({{"Tank", "n"}, {"KorvantIDE", "Return"}, {"KorvantIDE", "Escape"}});
    ScriptObject object;
    std::string buttons = "BU_YES_NO", no = "ID_NO";
    const int answer = object.messageBox("Tank", "Save it?", object.VAL(buttons), 0, "");
    host::check(answer == object.VAL(no), "the box was answered otherwise");
    host::check(object.prompt("Depth", 12) == 12, "the prompt of a number");
    const std::string name = "north";
    host::check(object.prompt("Name", name) == name, "the prompt of a text");
    return 0;
}
