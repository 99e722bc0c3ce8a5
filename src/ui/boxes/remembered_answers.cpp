#include "ui/boxes/remembered_answers.h"

#include <wx/confbase.h>
#include <wx/log.h>

#include <cstdint>
#include <cstdio>
#include <memory>

#include "ui/kit/settings_store.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

/// FNV-1a, 64 bit (http://www.isthe.com/chongo/tech/comp/fnv/).
std::uint64_t hashOf(std::uint64_t hash, const std::string& bytes) {
    for (const char c : bytes) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 0x100000001B3U;
    }
    return hash;
}

/// The zero byte keeps "ab" + "c" apart from "a" + "bc".
wxString keyOf(const MessageBoxRequest& request) {
    std::uint64_t hash = hashOf(0xCBF29CE484222325U, request.caption);
    hash = hashOf(hash, std::string(1, '\0'));
    hash = hashOf(hash, request.text);
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(hash));
    return wxString::FromAscii(digits);
}

}  // namespace

int rememberedAnswer(const MessageBoxRequest& request) {
    const wxLogNull silence;
    const auto store = openSettings(request.company, request.module);
    return store ? static_cast<int>(store->ReadLong(wxT("/DoNotShow/") + keyOf(request), 0)) : 0;
}

bool mayBeRemembered(int button) {
    return button > 0 && button != box_button::kCancel && button != box_button::kStopScript;
}

bool rememberAnswer(const MessageBoxRequest& request, int button) {
    const wxLogNull silence;
    const auto store = openSettings(request.company, request.module);
    return store && store->Write(wxT("/DoNotShow/") + keyOf(request), static_cast<long>(button)) &&
           store->Flush();
}

}  // namespace korvant::ui
