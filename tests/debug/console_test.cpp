// What the debugger says where a script is more than its main text.

#include "debug/console_fixture.h"

namespace korvant::test {
namespace {

class Console : public ConsoleFixture {};

TEST_F(Console, APlaceInAnotherSourceIsSaidAndItsTextIsNot) {
    shareLibrary("other.as", "int twice(int n) {\n    int r = n;\n    r += n;\n    return r;\n}\n",
                 "twice");
    const std::string seen =
        play("int main() {\n    int a = 1;\n    a = share(a);\n    return a;\n}\n",
             "break other.as:3\nrun\nlist\nlist 2\nup\nlist\ncontinue\n");
    EXPECT_EQ(seen, R"(> break other.as:3
Breakpoint 1 at other.as:3: The script is not built yet.
> run
Breakpoint 1
#0 int twice(int) at other.as:3
> list
The text of other.as is not at hand.
> list 2
The text of other.as is not at hand.
> up
#1 int main() at script.as:3
3	    a = share(a);
> list
 1	int main() {
 2	    int a = 1;
>3	    a = share(a);
 4	    return a;
 5	}
> continue
The script has ended.
)");
}

}  // namespace
}  // namespace korvant::test
