// Whole-file reads and crash-safe whole-file writes on host paths.
//
// A write goes to a temporary file beside the target, is flushed to disk and then renamed over the
// target, so a reader sees either the old file or the new one, never a half-written one.
#pragma once

#include <string>

enum class APReadResult { kOk, kMissing, kError };

// Reads the whole file; at most `limit` bytes (a larger file is an error, not a partial read).
APReadResult APAtomicFile_Read(const std::string& hostPath, std::string& data, std::string& error,
                               size_t limit = 16 * 1024 * 1024);
// Replaces the file's content atomically; the parent directory must exist.
bool APAtomicFile_Write(const std::string& hostPath, const std::string& data, std::string& error,
                        unsigned mode = 0644);
// Copies a file atomically (temporary file + rename), keeping the source's permission bits.
bool APAtomicFile_Copy(const std::string& fromHostPath, const std::string& toHostPath,
                       std::string& error);
// Renames a file to the first free name "<path>.<suffix>", "<path>.<suffix>.1", ...; the new name
// in `movedTo`.
bool APAtomicFile_SetAside(const std::string& hostPath, const std::string& suffix,
                           std::string& movedTo, std::string& error);
// Gives the file that first free name as well, keeping it under its own name, so that it can be
// replaced by an atomic write afterwards without readers ever finding it missing.
bool APAtomicFile_KeepAside(const std::string& hostPath, const std::string& suffix,
                            std::string& keptAs, std::string& error);
