# SPDX-License-Identifier: GPL-3.0-or-later
# What every target of the tree is built with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(QT_QML_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS QT_NO_FOREACH)
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)

if(ORVALIA_SANITIZE)
    add_compile_options(-fsanitize=${ORVALIA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${ORVALIA_SANITIZE})
endif()

# A library of this tree: includes are rooted at src/.
function(orvalia_library name)
    add_library(${name} STATIC ${ARGN})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
endfunction()

# A folder of QML and the C++ beside it:
#   orvalia_qml_module(<target> <uri> [QML_FILES ...] [SOURCES ...] [RESOURCES ...] [LIBRARIES ...] [USES <uri> ...])
# USES names the modules of this tree whose types the C++ beside the QML shows in its properties.
# Whoever links <target> gets the module with it.
function(orvalia_qml_module target uri)
    cmake_parse_arguments(arg "" "" "QML_FILES;SOURCES;RESOURCES;LIBRARIES;USES" ${ARGN})
    # Compiling the QML ahead of time is most of a module's build; a debug build reads it at run time.
    set(no_cachegen)
    if(CMAKE_BUILD_TYPE STREQUAL "Debug")
        set(no_cachegen NO_CACHEGEN)
    endif()
    qt_add_qml_module(${target}
        STATIC
        URI ${uri}
        VERSION 1.0
        RESOURCE_PREFIX /qt/qml
        DEPENDENCIES QtQuick ${arg_USES}
        ${no_cachegen}
        QML_FILES ${arg_QML_FILES}
        SOURCES ${arg_SOURCES}
        RESOURCES ${arg_RESOURCES}
    )
    # Our warnings are not for what the QML compiler writes.
    get_target_property(generated ${target} SOURCES)
    list(FILTER generated INCLUDE REGEX "/qmlcache/")
    if(generated)
        set_source_files_properties(${generated} PROPERTIES COMPILE_OPTIONS -w)
    endif()
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${target} PUBLIC Qt6::Quick ${arg_LIBRARIES})
    set_property(GLOBAL APPEND PROPERTY ORVALIA_QML_PLUGINS ${target}plugin)
    set_property(GLOBAL APPEND PROPERTY ORVALIA_QML_MODULES ${target})
endfunction()

# Links every QML module of the tree into a program.
function(orvalia_link_screens target)
    get_property(plugins GLOBAL PROPERTY ORVALIA_QML_PLUGINS)
    target_link_libraries(${target} PRIVATE orvalia_screens ${plugins})
endfunction()
