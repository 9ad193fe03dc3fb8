#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace keldrin {

// Paths are split, never rewritten. Both "\" and "/" separate, on every platform; the last of
// either counts. An extension begins with the last point after the last separator; a leading point
// of a name does not begin one.

/// The directory with its last separator; empty when the path holds none.
std::string_view directoryOf(std::string_view path);

/// The part after the last separator.
std::string_view fileNameOf(std::string_view path);

/// The extension with its point, as written; empty when there is none.
std::string_view extensionOf(std::string_view path);

/// The path up to, and without, its extension.
std::string_view withoutExtension(std::string_view path);

/// The file name without directory and extension.
std::string_view baseNameOf(std::string_view path);

/// True for a path whose extension is ".std" in any case: the only files written as projects.
bool isProjectPath(std::string_view path);

/// The separator found last in the path, else the platform's.
char separatorOf(std::string_view path);

/// `directory` and `name` with a separator between them, unless `directory` is empty or has one.
std::string joinPath(std::string_view directory, std::string_view name);

/// True when something of that name exists, of whatever kind.
bool pathExists(const std::string &path);

/// True when the path names an existing regular file.
bool isRegularFile(const std::string &path);

/// The path itself; or, where it does not exist but its form with "/" for every "\" does, that.
std::string existingForm(const std::string &path);

/// The side file of a data or project file: `path` with `extension` (".mde") in place of its own.
/// The exact name if it exists, else the one file of that directory whose name equals it without
/// regard to case (first in byte order), else the exact name.
std::string sideFilePath(std::string_view path, std::string_view extension);

/// The working directory, without a separator at its end.
std::string workingDirectory();

/// The directory of the running program, without a separator at its end; empty when the system does
/// not say.
std::string executableDirectory();

/// Finds a program on the search path, then in `programDirectory` unless that is blank; empty when
/// it is in neither. Elements of the search path that are not absolute are skipped, so a program is
/// never looked for in the working directory.
std::optional<std::string> findProgram(std::string_view name, std::string_view searchPath,
                                       std::string_view programDirectory);

} // namespace keldrin
