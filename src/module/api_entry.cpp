// What an engine offers to scripts, written for tools.
#include <string>

#include "base/system/file_io.h"
#include "korvantide/host_interface.h"
#include "language/api_description.h"
#include "language/predefined.h"
#include "module/families.h"
#include "module/guarded.h"

using namespace korvant;

namespace {

/// Its readers see the old or the new content.
int replaceFile(FileOperations& files, const std::string& path, std::string_view bytes) {
    const std::string fresh = temporaryBeside(path);
    OpenFile file(files);
    if (const int error = files.create(fresh, false, file.handle())) return error;
    const Leftover leftover(files, fresh);
    if (const int error = writeFully(files, file.handle(), bytes)) return error;
    if (const int error = file.close()) return error;
    return files.rename(fresh, path);
}

std::string apiText(asIScriptEngine& engine, const std::string& path) {
    return nameOf(path).ends_with(".predefined") ? predefinedText(engine, allFamilies())
                                                 : apiToJson(describeEngine(engine));
}

}  // namespace

std::int32_t KORVANTIDE_CALL ExportScriptApi(void* engine, const char* path) {
    return guarded(0, [&] {
        if (engine == nullptr || path == nullptr || *path == '\0') return 0;
        const std::string text = apiText(*static_cast<asIScriptEngine*>(engine), path);
        return replaceFile(systemFiles(), path, text) == 0 ? 1 : 0;
    });
}
