#include "answer_check.h"

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

std::string faultOfKind(const Json& answer) {
    int kinds = 0;
    for (const char* kind : {"prompt", "box", "edit"}) {
        const auto found = answer.find(kind);
        if (found == answer.end()) continue;
        ++kinds;
        if (!found->is_string()) return "\"" + std::string(kind) + "\" must be a text";
    }
    return kinds == 1 ? "" : "needs one of \"prompt\", \"box\" and \"edit\"";
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

std::string faultOfAnswers(const Json& answers) {
    std::size_t number = 0;
    for (const Json& answer : answers) {
        ++number;
        const std::string fault = faultOf(answer);
        if (!fault.empty()) return "answer " + std::to_string(number) + ": " + fault;
    }
    return {};
}

}  // namespace korvant_app
