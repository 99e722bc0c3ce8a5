// A script's text cut into pieces by the compiler's own tokenizer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace korvant {

struct Lexeme {
    enum class Kind : std::uint8_t {
        blank,    ///< blanks, line ends and byte-order marks
        comment,  ///< with the line end that closes it
        name,
        keyword,  ///< reserved words, and all signs of several bytes
        value,    ///< a number or a text in quotes; what does not end runs to the end of the text
        unknown   ///< a byte that begins nothing
    };
    std::uint32_t begin = 0;  ///< in bytes from the beginning of the text
    std::uint32_t size = 0;   ///< at least 1
    Kind kind = Kind::unknown;
};

/// The lexeme that begins at `at`, which lies inside the text. Every byte of a text is in exactly
/// one lexeme, and all of them together take time in proportion to the text. Letters of all scripts
/// make names. Safe from any thread. Throws std::bad_alloc when the engine has no memory at the
/// first call.
Lexeme lexemeAt(std::string_view text, std::size_t at);

}  // namespace korvant
