#include "host/run/build_messages.h"

#include <utility>

namespace korvant {

void BuildMessages::add(std::string text, std::int32_t row, std::int32_t column,
                        BuildMessage::Kind kind) {
    if (messages_.size() >= kCapacity) return;
    std::string full =
        text + " at line " + std::to_string(row) + " column " + std::to_string(column) + "\n";
    messages_.push_back({std::move(full), row, column, kind, std::move(text)});
}

}  // namespace korvant
