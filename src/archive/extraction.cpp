#include "archive/extraction.h"

#include "foundation/errors.h"

#include <cerrno>

#include <sys/stat.h>

namespace stowlark {
namespace {

QString lowerCase(const std::string &name) {
    return displayText(name).toLower();
}

} // namespace

QString lowerCaseExtension(const std::string &archiveName) {
    return lowerCase(pathExtension(archiveName));
}

Extractor extractorFor(const std::string &archiveName) {
    const QString name = lowerCase(archiveName);
    const QString ext = lowerCaseExtension(archiveName);
    if (ext == u"zip") {
        return Extractor::unzip;
    }
    if (name.endsWith(u".tar.gz") || name.endsWith(u".tgz") || ext == u"gz") {
        return Extractor::untar;
    }
    if (ext == u"7z") {
        return Extractor::sevenZip;
    }
    if (ext == u"rar") {
        return Extractor::rar;
    }
    return ext == u"dmg" ? Extractor::dmg : Extractor::none;
}

std::string extractionFolderName(const std::string &archiveName) {
    const QString name = lowerCase(archiveName);
    const std::string base = deletingPathExtension(archiveName);
    return name.endsWith(u".tar.gz") || name.endsWith(u".tar.bz2") ? deletingPathExtension(base) : base;
}

Path createExtractionFolder(const Path &folder, const std::string &name) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        throw PlatformError(PlatformError::Action::createFolder, folder, error.value());
    }
    Path dest = folder / name;
    for (int n = 1; ::mkdir(dest.c_str(), 0777) != 0; ++n) {
        if (errno != EEXIST) {
            throw PlatformError(PlatformError::Action::createFolder, dest, errno);
        }
        dest = folder / (name + '_' + std::to_string(n));
    }
    return dest;
}

} // namespace stowlark
