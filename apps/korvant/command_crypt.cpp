// korvant crypt --key N FILE [-o OUT]: scrambles a text, or restores a scrambled one.
#include <cstdio>
#include <memory>

#include "base/system/file_io.h"
#include "base/system/os_file.h"
#include "base/system/user_folders.h"
#include "commands.h"
#include "editor/document/safe_save.h"
#include "editor/document/scramble.h"
#include "process_setup.h"
#include "script_file.h"
#include "source_report.h"

namespace korvant_app {

namespace {

constexpr std::size_t kLargestFile = std::size_t{256} << 20;

struct Crypt {
    std::string file;
    std::string target;  ///< empty: standard output
    std::int32_t key = 0;
};

/// Names the file's content as the editor's own, since the user has said that it may go.
korvant::FileMark overwritable(const std::string& path) {
    korvant::FileMark mark;
    mark.path = path;
    mark.written = true;
    korvant::systemFiles().status(path, mark.status);
    return mark;
}

bool writeFile(const std::string& path, const std::string& text) {
    korvant::BackupStore backups(korvant::systemFiles(),
                                 korvant::joinPathIn(korvant::userDataFolder(), "backups"));
    korvant::SafeSave saver(korvant::systemFiles(), backups);
    const korvant::SaveResult saved = saver.write(path, text, overwritable(path));
    if (saved.failure == korvant::SaveFailure::none) return true;
    const std::string reason = saved.error != 0 ? ": " + korvant::systemErrorText(saved.error) : "";
    complain("cannot write " + path + reason);
    return false;
}

bool writeStandardOutput(const std::string& text) {
    writeBytesAsTheyAre();
    const bool written = writeOutput(text) && finishOutput() == 0;
    if (!written) complainOfOutput(finishOutput());
    return written;
}

int crypt(const Crypt& request) {
    std::optional<Source> source = readScript(request.file, kLargestFile);
    if (!source) return kCannotRead;
    if (source->text.size() > kLargestFile) {
        complain("cannot read " + request.file + ": longer than 256 MiB");
        return kCannotRead;
    }
    korvant::scramble(source->text, request.key);
    const bool written = request.target.empty() ? writeStandardOutput(source->text)
                                                : writeFile(request.target, source->text);
    return written ? kFinished : kRunFailed;
}

}  // namespace

void addCryptCommand(CLI::App& app, int& exitCode) {
    const auto request = std::make_shared<Crypt>();
    CLI::App* const command = app.add_subcommand(
        "crypt", "Scrambles a text, or restores it with the same key; this is no encryption");
    command->add_option("--key", request->key, "number from -2147483648 to 2147483647")->required();
    command->add_option("FILE", request->file, "text to scramble or restore")->required();
    command->add_option("-o,--output", request->target, "file to write; standard output otherwise");
    command->callback([request, &exitCode] { exitCode = crypt(*request); });
}

}  // namespace korvant_app
