// Folders of this user and of this program.
#pragma once

#include <string>

namespace korvant {

/// Where this user's data of the product is kept; empty when the system names no such folder.
std::string userDataFolder();

/// The folder of the program that this process runs; empty when it cannot be told.
std::string programFolder();

/// The folder of the library or program that this code is a part of; empty when it cannot be told.
std::string moduleFolder();

/// `path` as it is from any current folder.
std::string absolutePath(const std::string& path);

/// The scripting manual's first page: beside the program, or else where an installation of the
/// program or of the module keeps it; where it would stand beside the program when there is none.
std::string manualPage(const std::string& programFolder);

/// Opens a file with the desktop's program for it, without a shell; of a page also at a place in
/// it, "page.html#place". False when the file is not
/// there or nothing could be started.
bool openWithDesktop(const std::string& path);

}  // namespace korvant
