#include "base/system/key_codes.h"

#include <string>

#include "base/text/text_encoding.h"

namespace korvant {

namespace {

constexpr char kEscape = 27;
constexpr std::size_t kLongestSequence = 16;

struct NamedKey {
    std::string_view sequence;  ///< after the escape byte
    int prefix;
    int scanCode;
};

/// Sequences of the terminals in use: xterm and its kin, the console of Linux, rxvt.
constexpr NamedKey kNamedKeys[] = {
    {"[A", 224, 72},  {"OA", 224, 72},  {"[B", 224, 80},  {"OB", 224, 80},  {"[C", 224, 77},
    {"OC", 224, 77},  {"[D", 224, 75},  {"OD", 224, 75},  {"[H", 224, 71},  {"OH", 224, 71},
    {"[1~", 224, 71}, {"[7~", 224, 71}, {"[F", 224, 79},  {"OF", 224, 79},  {"[4~", 224, 79},
    {"[8~", 224, 79}, {"[5~", 224, 73}, {"[6~", 224, 81}, {"[2~", 224, 82}, {"[3~", 224, 83},
    {"OP", 0, 59},    {"OQ", 0, 60},    {"OR", 0, 61},    {"OS", 0, 62},    {"[11~", 0, 59},
    {"[12~", 0, 60},  {"[13~", 0, 61},  {"[14~", 0, 62},  {"[15~", 0, 63},  {"[17~", 0, 64},
    {"[18~", 0, 65},  {"[19~", 0, 66},  {"[20~", 0, 67},  {"[21~", 0, 68}};

std::vector<int> codesOf(std::string_view bytes) {
    std::vector<int> codes;
    for (const char c : bytes) codes.push_back(static_cast<unsigned char>(c));
    return codes;
}

bool endsControlSequence(char c) {
    return c >= 0x40 && c <= 0x7E;
}

}  // namespace

std::vector<int> keyCodes(std::string_view bytes) {
    if (bytes == "\x7f") return {8};
    if (bytes.empty() || bytes.front() != kEscape) return codesOf(encodeTyped(bytes));
    for (const NamedKey& key : kNamedKeys)
        if (bytes.substr(1) == key.sequence) return {key.prefix, key.scanCode};
    return codesOf(bytes);
}

bool keyGoesOn(std::string_view bytes) {
    if (bytes.empty()) return true;
    if (bytes.front() != kEscape) return utf8SequenceLength(bytes) == -1;
    if (bytes.size() == 1) return true;
    if (bytes[1] == 'O') return bytes.size() < 3;
    if (bytes[1] != '[') return false;
    return bytes.size() < kLongestSequence &&
           (bytes.size() == 2 || !endsControlSequence(bytes.back()));
}

}  // namespace korvant
