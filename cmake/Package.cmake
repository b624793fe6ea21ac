# What cpack makes: on Linux a package for Debian.

set(CPACK_PACKAGE_NAME stowlark)
set(CPACK_PACKAGE_VENDOR Stowlark)
set(CPACK_VERBATIM_VARIABLES ON)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    set(CPACK_GENERATOR DEB)
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(CPACK_STRIP_FILES ON)
    set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
        OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
    set(CPACK_DEBIAN_PACKAGE_RELEASE ${STOWLARK_DEBIAN_REVISION})
    set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Stowlark <packages@${STOWLARK_SITE}>")
    set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://${STOWLARK_SITE}/")
    set(CPACK_DEBIAN_PACKAGE_SECTION utils)
    set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    string(CONCAT CPACK_DEBIAN_PACKAGE_DEPENDS "qml6-module-qtqml, qml6-module-qtqml-workerscript, "
        "qml6-module-qtquick, qml6-module-qtquick-controls, qml6-module-qtquick-layouts, "
        "qml6-module-qtquick-templates, qml6-module-qtquick-window, unzip, zip") # gzip and tar are essential
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "p7zip-full | 7zip")
    set(CPACK_DEBIAN_PACKAGE_SUGGESTS
        "rar, unrar | unrar-free, python3-nautilus, python3-caja, thunarx-python, gir1.2-thunarx-3.0, qt6-wayland")
    set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "make and unpack archives in one small window")
    string(CONCAT CPACK_DEBIAN_PACKAGE_DESCRIPTION
        "Stowlark makes ZIP, TAR.GZ, 7-Zip, RAR and DMG archives of the files and\n"
        "folders that are dropped on its window, and unpacks such archives into new\n"
        "folders.\n"
        ".\n"
        "It compresses nothing itself but runs zip, unzip, tar, gzip, 7z, rar and unrar\n"
        "on copies, and tells in one line how that went. Disk images it makes and\n"
        "unpacks with a small program of its own. File managers get \"Extract with\n"
        "Stowlark\" in the context menus of archives.")
endif()
include(CPack)
