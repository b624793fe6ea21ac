#include "foundation/path_name.h"

namespace stowlark {
namespace {

std::string_view withoutTrailingSlashes(std::string_view path) {
    while (path.size() > 1 && path.back() == '/') {
        path.remove_suffix(1);
    }
    return path;
}

} // namespace

std::string lastPathComponent(const Path &path) {
    const std::string_view bytes = withoutTrailingSlashes(path.native());
    const auto slash = bytes.rfind('/');
    if (slash == std::string_view::npos || bytes.size() == 1) {
        return std::string(bytes);
    }
    return std::string(bytes.substr(slash + 1));
}

std::string pathExtension(std::string_view name) {
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 1 == name.size() || name.starts_with("..")) {
        return {};
    }
    return std::string(name.substr(dot + 1));
}

std::string deletingPathExtension(std::string_view name) {
    const std::string extension = pathExtension(name);
    return std::string(extension.empty() ? name : name.substr(0, name.size() - extension.size() - 1));
}

Path parentFolder(const Path &path) {
    return Path(withoutTrailingSlashes(path.native())).parent_path();
}

QString displayText(std::string_view bytes) {
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

} // namespace stowlark
