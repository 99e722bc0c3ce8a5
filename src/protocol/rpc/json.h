// JSON of messages: read with bounds, looked into without exceptions.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace korvant::rpc {

using Json = nlohmann::json;

/// Brackets inside each other that a message may have; a real one has about ten.
inline constexpr int kDeepestMessage = 200;

/// The value that `text` is; nothing where it is no JSON, is not UTF-8, or is too deep.
std::optional<Json> readJson(std::string_view text);

/// As one line of UTF-8; bytes that are no text become U+FFFD.
std::string writeJson(const Json& value);

/// The member `name` of an object; null, which is a value like others, where there is none.
const Json& memberOf(const Json& object, const char* name);

/// The member's text, number or truth, or `otherwise` where it is missing or of another type.
std::string textOf(const Json& object, const char* name, std::string otherwise = {});
std::int64_t numberOf(const Json& object, const char* name, std::int64_t otherwise = 0);
bool truthOf(const Json& object, const char* name, bool otherwise = false);

}  // namespace korvant::rpc
