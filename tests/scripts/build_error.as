// exit: 2
// error: build_error.as:5:12: error: No matching symbol 'unknown'
// error:            ^
int main() {
    return unknown;
}
