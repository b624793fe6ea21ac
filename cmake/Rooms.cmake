# A room is a static library that links only the rooms and Qt modules named after LINKS.
#
#   stowlark_room(NAME [ENGINE] SOURCES ... LINKS ...)
#
# An ENGINE room knows no screen: headers of Qt's Gui, Widgets, Qml and Quick modules end the compilation.

qt_standard_project_setup()

add_library(stowlark_options INTERFACE)
target_compile_features(stowlark_options INTERFACE cxx_std_20)
target_compile_definitions(stowlark_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_KEYWORDS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
set(STOWLARK_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    $<$<CXX_COMPILER_ID:GNU>:-Wno-free-nonheap-object>) # wrong since GCC 13, of vectors that grow and of coroutines
if(CMAKE_UNITY_BUILD) # GCC 12 takes what is local to an included source for shared
    list(APPEND STOWLARK_WARNINGS $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()
if(STOWLARK_SANITIZE)
    target_compile_options(stowlark_options INTERFACE -fsanitize=${STOWLARK_SANITIZE} -fno-omit-frame-pointer)
    # Clang 14 cannot check the types of called functions in coroutines.
    target_compile_options(stowlark_options INTERFACE $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>)
    # With its sanitizers GCC 12 warns wrongly of values in std::optional.
    target_compile_options(stowlark_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(stowlark_options INTERFACE -fsanitize=${STOWLARK_SANITIZE})
endif()

add_library(stowlark_no_screen INTERFACE)
target_include_directories(stowlark_no_screen BEFORE INTERFACE ${CMAKE_CURRENT_LIST_DIR}/no_screen)

function(stowlark_room name)
    cmake_parse_arguments(room "ENGINE" "" "SOURCES;LINKS" ${ARGN})
    add_library(stowlark_${name} STATIC ${room_SOURCES})
    target_include_directories(stowlark_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(stowlark_${name} PUBLIC ${room_LINKS} PRIVATE stowlark_options)
    target_compile_options(stowlark_${name} PRIVATE ${STOWLARK_WARNINGS})
    if(room_ENGINE)
        target_link_libraries(stowlark_${name} PRIVATE stowlark_no_screen)
    endif()
endfunction()

# A room with views is also a QML module, Stowlark.Name.
#
#   stowlark_qml_room(Name SOURCES ... QML ... RESOURCES ... LINKS ...)
function(stowlark_qml_room name)
    cmake_parse_arguments(room "" "" "SOURCES;QML;RESOURCES;LINKS" ${ARGN})
    string(TOLOWER ${name} library)
    if(STOWLARK_SANITIZE OR STOWLARK_UNCOMPILED_QML) # what Qt generates from the QML takes long to build and is not what is looked at
        set(uncompiled NO_CACHEGEN)
    endif()
    qt_add_library(stowlark_${library} STATIC)
    qt_add_qml_module(stowlark_${library}
        URI Stowlark.${name}
        VERSION 1.0
        DEPENDENCIES QtQuick
        NO_PLUGIN ${uncompiled}
        OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/qml/Stowlark/${name}
        RESOURCE_PREFIX /qt/qml
        IMPORT_PATH ${PROJECT_BINARY_DIR}/qml
        SOURCES ${room_SOURCES}
        QML_FILES ${room_QML}
        RESOURCES ${room_RESOURCES})
    target_include_directories(stowlark_${library} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(stowlark_${library} PUBLIC ${room_LINKS} PRIVATE stowlark_options)
    set(warnings ${STOWLARK_WARNINGS})
    list(REMOVE_ITEM warnings -Wshadow) # which what Qt generates from the QML does not pass
    target_compile_options(stowlark_${library} PRIVATE ${warnings})
endfunction()
