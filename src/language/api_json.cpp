// The description of an engine as JSON, for tools that have no engine of that kind.
#include <nlohmann/json.hpp>

#include "language/api_description.h"

namespace korvant {

namespace {

using Json = nlohmann::json;
constexpr int kFormat = 1;
constexpr const char* kKinds[] = {"object", "interface", "enum", "funcdef", "typedef"};

Json functionJson(const ApiFunction& function) {
    Json json{{"declaration", function.declaration}};
    if (!function.nameSpace.empty()) json["namespace"] = function.nameSpace;
    if (function.accessMask != ~0u) json["access"] = function.accessMask;
    if (function.behaviour >= 0) json["behaviour"] = function.behaviour;
    return json;
}

ApiFunction functionFrom(const Json& json) {
    ApiFunction function;
    function.declaration = json.at("declaration").get<std::string>();
    function.nameSpace = json.value("namespace", "");
    function.accessMask = json.value("access", ~0u);
    function.behaviour = json.value("behaviour", -1);
    return function;
}

Json propertyJson(const ApiProperty& property) {
    Json json{{"declaration", property.declaration}, {"offset", property.offset}};
    if (!property.nameSpace.empty()) json["namespace"] = property.nameSpace;
    if (property.accessMask != ~0u) json["access"] = property.accessMask;
    if (property.compositeOffset != 0) json["compositeOffset"] = property.compositeOffset;
    if (property.compositeIndirect) json["compositeIndirect"] = true;
    return json;
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
Json listJson(const std::vector<Item>& items, Make make) {
    Json list = Json::array();
    for (const Item& item : items) list.push_back(make(item));
    return list;
}

template <class Item, class Make>
std::vector<Item> listFrom(const Json& json, const char* key, Make make) {
    std::vector<Item> items;
    if (const auto found = json.find(key); found != json.end())
        for (const Json& item : *found) items.push_back(make(item));
    return items;
}

Json typeJson(const ApiType& type) {
    Json json{{"kind", kKinds[static_cast<std::size_t>(type.kind)]},
              {"name", type.name},
              {"flags", type.flags},
              {"size", type.size}};
    if (!type.nameSpace.empty()) json["namespace"] = type.nameSpace;
    if (type.accessMask != ~0u) json["access"] = type.accessMask;
    if (!type.subTypes.empty()) json["subTypes"] = type.subTypes;
    if (!type.declaration.empty()) json["declaration"] = type.declaration;
    if (!type.behaviours.empty()) json["behaviours"] = listJson(type.behaviours, functionJson);
    if (!type.methods.empty()) json["methods"] = listJson(type.methods, functionJson);
    if (!type.properties.empty()) json["properties"] = listJson(type.properties, propertyJson);
    for (const auto& [name, value] : type.values)
        json["values"].push_back({{"name", name}, {"value", value}});
    return json;
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
    Json settings = Json::object();
    for (const auto& [property, value] : api.settings) settings[std::to_string(property)] = value;
    const Json json{{"format", kFormat},
                    {"engine", api.engineVersion},
                    {"settings", settings},
                    {"stringType", api.stringType},
                    {"defaultArray", api.defaultArray},
                    {"ownLibrary", api.ownLibrary},
                    {"types", listJson(api.types, typeJson)},
                    {"functions", listJson(api.functions, functionJson)},
                    {"properties", listJson(api.properties, propertyJson)}};
    return json.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
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
