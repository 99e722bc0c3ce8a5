// The description of an engine as JSON, for tools that have no engine of that kind.
#include <nlohmann/json.hpp>
#include <utility>

#include "language/api_description.h"

namespace korvant {

namespace {

using Json = nlohmann::json;
constexpr int kFormat = 1;
constexpr const char* kKinds[] = {"object", "interface", "enum", "funcdef", "typedef"};

/// Writes JSON as it is told. The library's own values would, when they are let go of, take memory
/// that there may not be; only a single text is handed to it.
class JsonText {
  public:
    void field(const char* name, const std::string& value) {
        key(name);
        quoted(value);
    }
    void field(const char* name, const char* value) { field(name, std::string(value)); }
    void field(const char* name, bool value) {
        key(name);
        text_ += value ? "true" : "false";
    }
    template <class Number>
    void field(const char* name, Number value) {
        key(name);
        text_ += std::to_string(value);
    }
    /// `write` writes the fields of what the name stands for.
    template <class Write>
    void object(const char* name, Write write) {
        key(name);
        braced(write);
    }
    template <class Items, class Write>
    void list(const char* name, const Items& items, Write write) {
        key(name);
        text_ += "[";
        first_ = true;
        for (const auto& item : items) {
            comma();
            write(*this, item);
        }
        text_ += "]";
        first_ = false;
    }
    template <class Write>
    void braced(Write write) {
        text_ += "{";
        first_ = true;
        write();
        text_ += "}";
        first_ = false;
    }
    void quoted(const std::string& value) {
        text_ += Json(value).dump(-1, ' ', false, Json::error_handler_t::replace);
    }
    std::string take() { return std::move(text_); }

  private:
    void comma() {
        if (!std::exchange(first_, false)) text_ += ",";
        text_ += "\n";
    }
    void key(const char* name) {
        comma();
        quoted(name);
        text_ += ": ";
    }

    std::string text_;
    bool first_ = true;
};

void writeFunction(JsonText& json, const ApiFunction& function) {
    json.braced([&] {
        json.field("declaration", function.declaration);
        if (!function.nameSpace.empty()) json.field("namespace", function.nameSpace);
        if (function.accessMask != ~0u) json.field("access", function.accessMask);
        if (function.behaviour >= 0) json.field("behaviour", function.behaviour);
    });
}

ApiFunction functionFrom(const Json& json) {
    ApiFunction function;
    function.declaration = json.at("declaration").get<std::string>();
    function.nameSpace = json.value("namespace", "");
    function.accessMask = json.value("access", ~0u);
    function.behaviour = json.value("behaviour", -1);
    return function;
}

void writeProperty(JsonText& json, const ApiProperty& property) {
    json.braced([&] {
        json.field("declaration", property.declaration);
        json.field("offset", property.offset);
        if (!property.nameSpace.empty()) json.field("namespace", property.nameSpace);
        if (property.accessMask != ~0u) json.field("access", property.accessMask);
        if (property.compositeOffset != 0) json.field("compositeOffset", property.compositeOffset);
        if (property.compositeIndirect) json.field("compositeIndirect", true);
    });
}

ApiProperty propertyFrom(const Json& json) {
    ApiProperty property;
    property.declaration = json.at("declaration").get<std::string>();
    property.nameSpace = json.value("namespace", "");
    property.accessMask = json.value("access", ~0u);
    property.offset = json.value("offset", 0);
    property.compositeOffset = json.value("compositeOffset", 0);
    property.compositeIndirect = json.value("compositeIndirect", false);
    return property;
}

template <class Item, class Make>
std::vector<Item> listFrom(const Json& json, const char* key, Make make) {
    std::vector<Item> items;
    if (const auto found = json.find(key); found != json.end())
        for (const Json& item : *found) items.push_back(make(item));
    return items;
}

void writeValue(JsonText& json, const std::pair<std::string, std::int32_t>& value) {
    json.braced([&] {
        json.field("name", value.first);
        json.field("value", value.second);
    });
}

void writeName(JsonText& json, const std::string& name) {
    json.quoted(name);
}

/// Empty lists are left out.
template <class Items, class Write>
void writeSome(JsonText& json, const char* name, const Items& items, Write write) {
    if (!items.empty()) json.list(name, items, write);
}

void writeType(JsonText& json, const ApiType& type) {
    json.braced([&] {
        json.field("kind", kKinds[static_cast<std::size_t>(type.kind)]);
        json.field("name", type.name);
        json.field("flags", type.flags);
        json.field("size", type.size);
        if (!type.nameSpace.empty()) json.field("namespace", type.nameSpace);
        if (type.accessMask != ~0u) json.field("access", type.accessMask);
        if (!type.declaration.empty()) json.field("declaration", type.declaration);
        writeSome(json, "subTypes", type.subTypes, writeName);
        writeSome(json, "behaviours", type.behaviours, writeFunction);
        writeSome(json, "methods", type.methods, writeFunction);
        writeSome(json, "properties", type.properties, writeProperty);
        writeSome(json, "values", type.values, writeValue);
    });
}

ApiType typeFrom(const Json& json) {
    ApiType type;
    const auto kind = json.at("kind").get<std::string>();
    for (std::size_t i = 0; i < std::size(kKinds); ++i)
        if (kind == kKinds[i]) type.kind = static_cast<ApiType::Kind>(i);
    type.name = json.at("name").get<std::string>();
    type.nameSpace = json.value("namespace", "");
    type.accessMask = json.value("access", ~0u);
    type.flags = json.value("flags", std::uint64_t{0});
    type.size = json.value("size", 0u);
    type.subTypes = json.value("subTypes", std::vector<std::string>());
    type.declaration = json.value("declaration", "");
    type.behaviours = listFrom<ApiFunction>(json, "behaviours", functionFrom);
    type.methods = listFrom<ApiFunction>(json, "methods", functionFrom);
    type.properties = listFrom<ApiProperty>(json, "properties", propertyFrom);
    using Value = std::pair<std::string, std::int32_t>;
    type.values = listFrom<Value>(json, "values", [](const Json& value) {
        return Value{value.at("name").get<std::string>(), value.at("value").get<std::int32_t>()};
    });
    return type;
}

}  // namespace

std::string apiToJson(const ApiDescription& api) {
    JsonText json;
    json.braced([&] {
        json.field("format", kFormat);
        json.field("engine", api.engineVersion);
        json.object("settings", [&] {
            for (const auto& [property, value] : api.settings)
                json.field(std::to_string(property).c_str(), value);
        });
        json.field("stringType", api.stringType);
        json.field("defaultArray", api.defaultArray);
        json.field("ownLibrary", api.ownLibrary);
        json.list("types", api.types, writeType);
        json.list("functions", api.functions, writeFunction);
        json.list("properties", api.properties, writeProperty);
    });
    return json.take() + "\n";
}

std::optional<ApiDescription> apiFromJson(std::string_view text) {
    try {
        const Json json = Json::parse(text);
        if (json.at("format").get<int>() != kFormat) return std::nullopt;
        ApiDescription api;
        api.engineVersion = json.value("engine", "");
        for (const auto& [key, value] : json.at("settings").items())
            api.settings[std::stoi(key)] = value.get<std::uint64_t>();
        api.stringType = json.value("stringType", "");
        api.defaultArray = json.value("defaultArray", "");
        api.ownLibrary = json.value("ownLibrary", false);
        api.types = listFrom<ApiType>(json, "types", typeFrom);
        api.functions = listFrom<ApiFunction>(json, "functions", functionFrom);
        api.properties = listFrom<ApiProperty>(json, "properties", propertyFrom);
        return api;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

}  // namespace korvant
