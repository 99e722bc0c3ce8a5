#include "form_report.h"

#include <cmath>

#include "base/text/text_encoding.h"

namespace korvant_app {

namespace {

using Json = nlohmann::ordered_json;
using korvant::decodeForDisplay;
using korvant::EditSession;

const char* typeOf(char letter) {
    switch (letter) {
        case 's':
            return "text";
        case 'e':
            return "lines";
        case 'F':
            return "file to open";
        case 'f':
            return "file to save";
        case 'l':
            return "integer";
        case 'c':
            return "colour";
        case 'o':
            return "option";
        case 'd':
            return "real";
        case 'b':
            return "boolean";
        default:
            return "none";
    }
}

Json valueOf(const EditSession& session, std::int32_t row) {
    switch (session.row(row).letter) {
        case 'l':
        case 'o':
            return session.integerValue(row);
        case 'd': {
            const double value = session.realValue(row);
            // JSON has no not-a-number and no infinity.
            if (!std::isfinite(value)) return session.state(row).text;
            return value;
        }
        case 'b':
            return session.booleanValue(row);
        default:
            return decodeForDisplay(session.state(row).text);
    }
}

Json messagesOf(const EditSession& session, std::int32_t row, bool errors) {
    Json list = Json::array();
    for (const std::string& one : session.failing(row, errors))
        list.push_back(decodeForDisplay(one));
    return list;
}

Json rowAsJson(const EditSession& session, std::int32_t row) {
    const korvant::EditRow& shown = session.row(row);
    Json object;
    object["name"] = decodeForDisplay(shown.name);
    object["label"] = decodeForDisplay(shown.label);
    object["category"] = decodeForDisplay(session.categoryCaption(shown.category));
    object["type"] = typeOf(shown.letter);
    object["value"] = valueOf(session, row);
    if (!shown.unit.empty()) object["unit"] = decodeForDisplay(shown.unit);
    if (shown.letter == 'o') {
        object["choice"] = decodeForDisplay(session.state(row).text);
        object["options"] = Json::array();
        for (const std::string& option : shown.options)
            object["options"].push_back(decodeForDisplay(option));
    }
    if (shown.radioGroup >= 0) object["radioGroup"] = shown.radioGroup;
    object["editable"] = session.state(row).editable;
    object["errors"] = messagesOf(session, row, true);
    object["warnings"] = messagesOf(session, row, false);
    return object;
}

/// The values of each element, with what fails in it.
Json elementsAsJson(EditSession& session, int page) {
    const korvant::EditGroupBar bar = session.groupBar(page);
    Json list = Json::array();
    for (std::size_t i = 0; i < bar.elements.size(); ++i) {
        session.chooseElement(page, static_cast<std::int32_t>(i));
        Json element;
        element["caption"] = decodeForDisplay(session.groupBar(page).elements[i]);
        for (std::int32_t row = session.page(page).first; row <= session.page(page).last; ++row) {
            element["values"][decodeForDisplay(session.row(row).name)] = valueOf(session, row);
            for (const Json& one : messagesOf(session, row, true)) element["errors"].push_back(one);
            for (const Json& one : messagesOf(session, row, false))
                element["warnings"].push_back(one);
        }
        list.push_back(std::move(element));
    }
    session.chooseElement(page, bar.current);
    return list;
}

Json pageAsJson(EditSession& session, int number) {
    const korvant::EditPage& page = session.page(number);
    Json object;
    object["caption"] = decodeForDisplay(page.caption);
    object["editable"] = page.editable;
    object["properties"] = Json::array();
    for (std::int32_t row = page.first; row <= page.last; ++row)
        object["properties"].push_back(rowAsJson(session, row));
    if (!page.isGroup) return object;
    object["current"] = session.groupBar(number).current;
    object["elements"] = elementsAsJson(session, number);
    return object;
}

std::string shownValue(const Json& property) {
    if (property.contains("choice")) return property["choice"].get<std::string>();
    const Json& value = property["value"];
    return value.is_string() ? value.get<std::string>() : value.dump();
}

void appendMessages(std::string& text, const Json& from, const std::string& indent) {
    for (const char* kind : {"errors", "warnings"}) {
        if (!from.contains(kind)) continue;
        for (const Json& message : from[kind])
            text += indent + (*kind == 'e' ? "error: " : "warning: ") + message.get<std::string>() +
                    "\n";
    }
}

void appendProperty(std::string& text, const Json& property) {
    text += "    " + property["label"].get<std::string>() + " (" +
            property["name"].get<std::string>() + ", " + property["type"].get<std::string>() +
            "): " + shownValue(property);
    if (property.contains("unit")) text += " " + property["unit"].get<std::string>();
    if (!property["editable"].get<bool>()) text += " [locked]";
    text += "\n";
    appendMessages(text, property, "      ");
}

void appendPage(std::string& text, const Json& page) {
    text += "[" + page["caption"].get<std::string>() + "]\n";
    std::string category;
    for (const Json& property : page["properties"]) {
        const std::string next = property["category"].get<std::string>();
        if (next != category) text += "  " + next + "\n";
        category = next;
        appendProperty(text, property);
    }
    if (!page.contains("elements")) return;
    for (const Json& element : page["elements"]) {
        text += "  element " + element["caption"].get<std::string>() + "\n";
        if (element.contains("values"))
            for (const auto& [name, value] : element["values"].items())
                text += "    " + name + " = " +
                        (value.is_string() ? value.get<std::string>() : value.dump()) + "\n";
        appendMessages(text, element, "    ");
    }
}

}  // namespace

Json formAsJson(EditSession& session) {
    Json form;
    form["title"] = decodeForDisplay(session.title());
    form["kind"] = session.kind() == korvant::FormKind::sheet ? "sheet" : "dialog";
    form["pages"] = Json::array();
    for (int page = 0; page < session.pageCount(); ++page)
        form["pages"].push_back(pageAsJson(session, page));
    return form;
}

std::string formAsText(const Json& form) {
    std::string text = form["title"].get<std::string>() + "\n";
    for (const Json& page : form["pages"]) appendPage(text, page);
    return text;
}

}  // namespace korvant_app
