# CMake's toolchain file to look at all sources with clang and libc++, as macOS has them, each alone: nothing is linked,
# objects and programs are empty files.
set(CMAKE_CXX_COMPILER clang++-19) # the version that Debian 12 and 13 both have
set(CMAKE_CXX_FLAGS_INIT -stdlib=libc++)
set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON) # which could bring along what a source does not include
set(CMAKE_AUTOGEN_ORIGIN_DEPENDS OFF)
set(STOWLARK_UNCOMPILED_QML ON)
get_property(trying GLOBAL PROPERTY IN_TRY_COMPILE)
if(NOT trying)
    set(CMAKE_CXX_COMPILE_OBJECT
        "<CMAKE_CXX_COMPILER> <DEFINES> <INCLUDES> <FLAGS> -fsyntax-only -o <OBJECT> -c <SOURCE>" "${CMAKE_COMMAND} -E touch <OBJECT>")
    set(CMAKE_CXX_ARCHIVE_CREATE "${CMAKE_COMMAND} -E touch <TARGET>")
    set(CMAKE_CXX_ARCHIVE_FINISH "")
    set(CMAKE_CXX_LINK_EXECUTABLE "cp /bin/true <TARGET>") # as some are run
endif()
