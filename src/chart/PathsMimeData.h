#pragma once

#include <QByteArray>
#include <QStringList>

#include <optional>
#include <span>
#include <string>
#include <vector>

class QMimeData;

namespace veltrano {

// Paths on their way through the clipboard or a drag. The private type carries any bytes, so that names that
// are no text survive; main thread.

/// The type that only this program reads and writes: an archive of an array of strings.
inline constexpr char kPathsMimeType[] = "com.quorvex.veltrano.data";

/// The archive: the key "paths", then each string in its order; key and strings each end with one NUL, which
/// no path can hold.
[[nodiscard]] QByteArray archivePaths(std::span<const std::string> paths);

/// The strings of an archive; nothing for bytes that are none.
[[nodiscard]] std::optional<std::vector<std::string>> unarchivePaths(const QByteArray& archive);

/// The types that `writeFilePaths` writes, the private one first.
[[nodiscard]] QStringList writablePasteboardTypes();

/// Writes the archive, and the strings as plain text with a line for each. False, and nothing written,
/// without a string.
[[nodiscard]] bool writeFilePaths(std::span<const std::string> paths, QMimeData& toPasteboard);

/// Adds paths of real files as the list of addresses that other programs take, percent-encoded byte by byte.
void writeFileUris(std::span<const std::string> paths, QMimeData& toPasteboard);

/// The paths that were written by this program; nothing for anything else.
[[nodiscard]] std::optional<std::vector<std::string>> readFilePaths(const QMimeData& pasteboard);

} // namespace veltrano
