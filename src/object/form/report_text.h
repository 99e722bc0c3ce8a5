// Texts that tell the user what fails.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace korvant {

/// Longer reports are cut here, "..." follows.
inline constexpr std::size_t kReportBytes = std::size_t{64} << 10;

/// One message stands alone; of several each has its number, ") ", itself and "<br>".
class NumberedMessages {
  public:
    void add(std::string_view message);
    int count() const noexcept { return count_; }
    const std::string& text() const noexcept { return text_; }

  private:
    std::string text_;
    int count_ = 0;
};

/// The report of one property: summary and messages; empty without messages.
std::string propertyReport(const NumberedMessages& messages, bool errors, std::int32_t locale);
/// The report of a form that may not be closed: summary and the captions of what fails.
std::string formReport(const NumberedMessages& captions, std::int32_t locale);

/// What a description is made of, all HTML but `heading` as scripts gave it.
struct DescriptionParts {
    const std::string& heading;
    const std::string* hint = nullptr;  ///< null: none
    const std::string& errors;
    const std::string& warnings;
};
std::string describe(const DescriptionParts& parts);

/// A grey line below a description; `html` is markup.
std::string greyLine(std::string_view html);
/// Plain text as HTML; every byte of 128 and above as a character reference of Windows Western.
std::string htmlOfWestern(std::string_view text);
/// Plain text as HTML, bytes of 128 and above as they stand.
std::string htmlOfPlain(std::string_view text);

}  // namespace korvant
