// What an engine offers to scripts, as data: read off an engine, written into another, kept as
// JSON.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/engine/engine_compat.h"

namespace korvant {

/// All declarations are in the form in which they are registered; those of behaviours name their
/// function "f".
struct ApiFunction {
    std::string declaration;
    std::string nameSpace;  ///< of global functions
    std::uint32_t accessMask = ~0u;
    int behaviour = -1;  ///< asEBehaviours of a type's behaviour; -1 for all others
};

struct ApiProperty {
    std::string declaration;
    std::string nameSpace;  ///< of global properties
    std::uint32_t accessMask = ~0u;
    int offset = 0;           ///< of members
    int compositeOffset = 0;  ///< of members that lie in another object
    bool compositeIndirect = false;
};

struct ApiType {
    enum class Kind : std::uint8_t { object, interface, enumeration, functionType, alias };
    Kind kind = Kind::object;
    std::string name;
    std::string nameSpace;
    std::uint32_t accessMask = ~0u;
    std::uint64_t flags = 0;              ///< asEObjTypeFlags
    std::uint32_t size = 0;               ///< bytes of a value
    std::vector<std::string> subTypes;    ///< names of a template's parameters
    std::string declaration;              ///< of a function type; the type that an alias stands for
    std::vector<ApiFunction> behaviours;  ///< factories included
    std::vector<ApiFunction> methods;
    std::vector<ApiProperty> properties;
    std::vector<std::pair<std::string, std::int32_t>> values;  ///< of an enumeration
};

/// Everything in the order in which it was registered.
struct ApiDescription {
    std::string engineVersion;
    std::map<int, std::uint64_t> settings;  ///< engine properties
    std::string stringType;                 ///< what a text in quotes is; empty: none
    std::string defaultArray;               ///< name of the template behind "T[]"; empty: none
    bool ownLibrary = false;                ///< the run-time library of this module is registered
    std::vector<ApiType> types;
    std::vector<ApiFunction> functions;
    std::vector<ApiProperty> properties;
};

/// Reads what is registered; scripts and modules of the engine do not matter and are not touched.
/// On the thread that the engine is used on.
ApiDescription describeEngine(asIScriptEngine& engine);

/// Gives `engine` all of `api` that it does not have yet, under functions that do nothing: for
/// building, never for running. What is there stays as it is. Returns the first negative engine
/// result, else 0.
int mirrorEngine(const ApiDescription& api, asIScriptEngine& engine);

std::string apiToJson(const ApiDescription& api);
/// Nothing for a text that is not such a description.
std::optional<ApiDescription> apiFromJson(std::string_view json);

}  // namespace korvant
