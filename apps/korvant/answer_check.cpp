#include "answer_check.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace korvant_app {

namespace {

using Json = nlohmann::ordered_json;

bool isValue(const Json& json) {
    return json.is_boolean() || json.is_number() || json.is_string();
}

/// The name of the first property whose value is of no kind that a form takes; empty for none.
std::string badValue(const Json& values) {
    for (const auto& [name, value] : values.items())
        if (!isValue(value)) return name;
    return {};
}

std::string faultOfValues(const Json& values, const std::string& where) {
    if (!values.is_object()) return where + " must be an object of values by property name";
    const std::string name = badValue(values);
    if (name.empty()) return {};
    return where + ": \"" + name + "\" must be a number, a text, true or false";
}

std::string faultOfElements(const Json& groups) {
    if (!groups.is_object()) return "\"elements\" must be an object of lists by page";
    for (const auto& [page, list] : groups.items()) {
        const std::string where = "\"elements\", \"" + page + "\"";
        if (!list.is_array()) return where + " must be a list of elements";
        for (const Json& element : list)
            if (std::string fault = faultOfValues(element, where); !fault.empty()) return fault;
    }
    return {};
}

/// What asks, and the keys of its answers.
constexpr struct {
    const char* name;
    std::array<std::string_view, 4> keys;
} kKinds[] = {
    {"prompt", {"prompt", "value", "repeat"}},
    {"box", {"box", "button", "repeat"}},
    {"edit", {"set", "elements", "ok", "repeat"}},
};

std::string faultOfKind(const Json& answer) {
    int kinds = 0;
    std::string unknown;
    for (const auto& kind : kKinds) {
        const auto found = answer.find(kind.name);
        if (found == answer.end()) continue;
        ++kinds;
        if (!found->is_string()) return "\"" + std::string(kind.name) + "\" must be a text";
        for (const auto& [key, value] : answer.items())
            if (key != kind.name &&
                std::find(kind.keys.begin(), kind.keys.end(), key) == kind.keys.end())
                unknown = "\"" + key + "\" is nothing that an answer to \"" + kind.name + "\" has";
    }
    return kinds == 1 ? unknown : "needs one of \"prompt\", \"box\" and \"edit\"";
}

/// "LINE:COLUMN:" of the byte, all counted from 1.
std::string placeOf(const std::string& text, std::size_t byte) {
    const std::string before = text.substr(0, byte == 0 ? 0 : byte - 1);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const std::size_t begin = before.rfind('\n') + 1;  // npos + 1 is 0
    return std::to_string(line) + ":" + std::to_string(before.size() - begin + 1) + ":";
}

std::string faultOf(const Json& answer) {
    if (!answer.is_object()) return "must be an object";
    if (std::string fault = faultOfKind(answer); !fault.empty()) return fault;
    for (const char* key : {"repeat", "ok"})
        if (answer.contains(key) && !answer.at(key).is_boolean())
            return "\"" + std::string(key) + "\" must be true or false";
    if (answer.contains("button") && !answer.at("button").is_string())
        return "\"button\" must be a text";
    if (answer.contains("value") && !answer.at("value").is_number() &&
        !answer.at("value").is_string())
        return "\"value\" must be a number or a text";
    if (answer.contains("set"))
        if (std::string fault = faultOfValues(answer.at("set"), "\"set\""); !fault.empty())
            return fault;
    return answer.contains("elements") ? faultOfElements(answer.at("elements")) : "";
}

}  // namespace

std::string faultOfJson(const std::string& text) {
    Json json;
    try {
        json = Json::parse(text);
    } catch (const Json::parse_error& fault) {
        return placeOf(text, fault.byte) + " this is no JSON";
    } catch (const Json::exception&) {
        return " a number is too large";
    }
    if (!json.is_object() || !json.contains("answers") || !json.at("answers").is_array())
        return " not a file of answers: {\"answers\": [...]}";
    std::size_t number = 0;
    for (const Json& answer : json.at("answers")) {
        ++number;
        const std::string fault = faultOf(answer);
        if (!fault.empty()) return " answer " + std::to_string(number) + ": " + fault;
    }
    return {};
}

}  // namespace korvant_app
