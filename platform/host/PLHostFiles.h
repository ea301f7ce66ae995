// File helpers of the simulator: where the program is installed, and writes that never leave a
// half-written file behind (a temporary file beside the target, then a rename).
#pragma once

#include <string>
#include <string_view>

class PLBitmap;

class PLHostFiles {
public:
    // The directory of the running executable (from /proc/self/exe); empty when unknown.
    static std::string ExecutableDir();
    // The build or install directory: $CAL_INSTALL_DIR, else the executable's parent directory.
    static std::string InstallDir();
    // Makes `path` absolute against the current directory (no symlink resolution).
    static std::string Absolute(const std::string& path);
    static bool Exists(const std::string& path);
    // mkdir -p. False with a reason when a component cannot be made.
    static bool MakeDirectories(const std::string& path, std::string& error);
    // Writes the whole text to `path` through a temporary file and a rename.
    static bool WriteAtomically(const std::string& path, std::string_view data, std::string& error);
    // Copies `from` to `to` through a temporary file and a rename.
    static bool CopyAtomically(const std::string& from, const std::string& to, std::string& error);
    // Saves a bitmap as PNG through a temporary file and a rename.
    static bool SavePNGAtomically(const PLBitmap& bitmap, const std::string& path,
                                  std::string& error);
    // Reads a whole file (or standard input for "-"). False with a reason on failure.
    static bool ReadAll(const std::string& path, std::string& data, std::string& error);

private:
    static std::string TemporaryPathFor(const std::string& path);
};
