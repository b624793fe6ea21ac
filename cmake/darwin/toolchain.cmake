# CMake's toolchain file for macOS on arm64, away from it: clang, lld and libc++ of Debian, with the C headers and the
# system library's stub in STOWLARK_DARWIN_LIBC, the declarations of AppKit in tests/macos, and the headers of this
# machine's Qt. What is linked is there to be read, not to be run. STOWLARK_HOST_BUILD is a build for this machine.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CMAKE_OSX_DEPLOYMENT_TARGET STOWLARK_DARWIN_LIBC STOWLARK_HOST_BUILD)
set(llvm /usr/lib/llvm-19) # the version that Debian 12 and 13 both have
execute_process(COMMAND g++ -print-multiarch OUTPUT_VARIABLE multiarch OUTPUT_STRIP_TRAILING_WHITESPACE)

# libc++ says what is newer than the system that is compiled for, where it is configured to.
file(READ ${llvm}/include/c++/v1/__config_site site)
string(REPLACE "#define _LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS" "" site "${site}")
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/libcxx/__config_site CONTENT "${site}" @ONLY)

string(CONCAT flags "-target arm64-apple-macos${CMAKE_OSX_DEPLOYMENT_TARGET} -nostdlibinc"
    " -isystem \"${CMAKE_BINARY_DIR}/libcxx\" -isystem ${llvm}/include/c++/v1"
    " -isystem \"${STOWLARK_DARWIN_LIBC}/include/any-macos-any\""
    " -idirafter \"${CMAKE_CURRENT_LIST_DIR}/../../tests/macos/declarations\"")
foreach(language CXX OBJCXX)
    set(CMAKE_${language}_COMPILER ${llvm}/bin/clang++)
    set(CMAKE_${language}_FLAGS_INIT "${flags}")
    set(CMAKE_${language}_COMPILER_WORKS TRUE)
    set(CMAKE_${language}_ABI_COMPILED TRUE)
    set(CMAKE_${language}_LINK_EXECUTABLE
        "\"${CMAKE_CURRENT_LIST_DIR}/link\" ${CMAKE_OSX_DEPLOYMENT_TARGET} \"${STOWLARK_DARWIN_LIBC}/darwin/libSystem.tbd\" <TARGET> <OBJECTS> <LINK_LIBRARIES>")
    set(CMAKE_${language}_IMPLICIT_INCLUDE_DIRECTORIES /usr/include)
endforeach()
string(APPEND CMAKE_OBJCXX_FLAGS_INIT " -Werror=objc-method-access -Werror=unguarded-availability")
set(CMAKE_SIZEOF_VOID_P 8)
set(CMAKE_AR ${llvm}/bin/llvm-ar CACHE FILEPATH "")
set(CMAKE_RANLIB ${llvm}/bin/llvm-ranlib CACHE FILEPATH "")
set(CMAKE_INSTALL_NAME_TOOL /bin/true)
set(CMAKE_OSX_SYSROOT "" CACHE PATH "")
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/run_host "${STOWLARK_HOST_BUILD}")
set(CMAKE_AUTOGEN_ORIGIN_DEPENDS OFF)
set(STOWLARK_UNCOMPILED_QML ON)

set(CMAKE_PREFIX_PATH /usr/lib/${multiarch} /usr)
set(CMAKE_LIBRARY_ARCHITECTURE ${multiarch})
set(QT_HOST_PATH /usr CACHE PATH "")
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/${multiarch}/cmake CACHE PATH "")
set(CMAKE_HAVE_LIBC_PTHREAD TRUE)
foreach(name WrapOpenGL WrapVulkanHeaders) # which Qt's packages ask for, and no source of ours
    set(${name}_FOUND TRUE)
    if(NOT TARGET ${name}::${name})
        add_library(${name}::${name} INTERFACE IMPORTED GLOBAL)
    endif()
endforeach()
