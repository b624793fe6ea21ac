#pragma once

#include <QString>

#include <filesystem>
#include <string>
#include <string_view>

/// Names of files, as bytes. A name is the last component of a path; its extension is what follows the last
/// dot. A dot at the start or the end makes no extension, nor does any dot of a name that begins with two
/// dots.
namespace stowlark {

using Path = std::filesystem::path;

/// The name of the item at `path`, trailing slashes ignored; "/" for the root.
std::string lastPathComponent(const Path &path);

/// Without the dot; empty where there is none.
std::string pathExtension(std::string_view name);

/// `name` without its last extension and the dot before it.
std::string deletingPathExtension(std::string_view name);

/// The folder that holds the item at `path`, trailing slashes ignored.
Path parentFolder(const Path &path);

/// Bytes of a name or path as text for people: bytes that are no UTF-8 become U+FFFD.
QString displayText(std::string_view bytes);

} // namespace stowlark
