#include "editor/assist/manual_place.h"

#include <cctype>

#include "editor/assist/suggestion_list.h"

namespace korvant {

std::string manualSlug(std::string_view title) {
    std::string slug;
    for (const char c : title) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isalnum(byte) != 0)
            slug += static_cast<char>(std::tolower(byte));
        else if (!slug.empty() && slug.back() != '-')
            slug += '-';
    }
    return slug;
}

std::string manualPlaceOf(std::span<const FunctionFamily> families, const std::string& function) {
    for (const FunctionFamily& family : families)
        for (const FunctionRow& row : family.rows)
            if (!partsOf(row.declaration, function).name.empty())
                return "ref-" + manualSlug(family.title) + ".html#" + function;
    return {};
}

std::string exceptionPlace(std::string_view exception) {
    return "exceptions.html#" + manualSlug(exception);
}

}  // namespace korvant
