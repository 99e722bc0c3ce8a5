#include "host/run/build_messages.h"

#include <utility>

namespace korvant {

namespace {

/// Of one message: the compiler words types and names of any length in it.
constexpr std::size_t kTextBytes = 4000;

}  // namespace

void BuildMessages::add(std::string text, std::int32_t row, std::int32_t column,
                        BuildMessage::Kind kind) {
    if (messages_.size() >= kCapacity) return;
    if (text.size() > kTextBytes) text.replace(kTextBytes, std::string::npos, "...");
    std::string full =
        text + " at line " + std::to_string(row) + " column " + std::to_string(column) + "\n";
    messages_.push_back({std::move(full), row, column, kind, std::move(text)});
}

}  // namespace korvant
