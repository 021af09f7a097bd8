# SPDX-License-Identifier: MIT

# Adds QtSingleApplication, QtLocalPeer and QtLockedFile to the library.
#
# A packaged copy of the component on the system is preferred. Otherwise its published sources are
# taken from a cache folder outside of the build tree, fetched into it when it does not hold them,
# checked by their hashes and compiled into the library.

set(single_application_rules ${CMAKE_CURRENT_LIST_DIR}/single-application)
set(single_application_script ${PROJECT_SOURCE_DIR}/scripts/fetch-single-application)
set(single_application_headers qtsingleapplication.h qtlocalpeer.h qtlockedfile.h)

# Lets the headers of the packaged copy be found under the names that the library gives them.
function(kova_add_packaged_single_application target)
    foreach(header IN LISTS single_application_headers)
        file(CONFIGURE OUTPUT ${generated_include_dir}/kovakit-qt/single-application/${header}
            CONTENT "#pragma once\n\n#include <${header}>\n")
    endforeach()
    target_include_directories(${target} SYSTEM PUBLIC ${KOVAKIT_SINGLE_APPLICATION_INCLUDE})
    target_link_libraries(${target} PUBLIC ${KOVAKIT_SINGLE_APPLICATION_LIBRARY})
    # Some distributions package the lock file apart.
    if(KOVAKIT_LOCKED_FILE_LIBRARY)
        target_link_libraries(${target} PUBLIC ${KOVAKIT_LOCKED_FILE_LIBRARY})
    endif()
endfunction()

# Makes sure that the folder holds the published files, unchanged.
function(kova_check_single_application_sources folder)
    execute_process(COMMAND ${single_application_script} ${folder}
        RESULT_VARIABLE result ERROR_VARIABLE message ERROR_STRIP_TRAILING_WHITESPACE)
    if(NOT result EQUAL 0)
        string(REGEX REPLACE "^.*\n" "" message "${message}")
        message(FATAL_ERROR "The single-instance component is missing. ${message}\n"
            "Or configure with -DKOVAKIT_WITH_SINGLE_APPLICATION=OFF to do without it.")
    endif()
endfunction()

function(kova_compile_single_application target)
    find_program(KOVAKIT_PATCH patch REQUIRED)
    kova_check_single_application_sources(${KOVAKIT_SINGLE_APPLICATION_DIR})

    set(sources ${PROJECT_BINARY_DIR}/single-application)
    set(headers ${generated_include_dir}/kovakit-qt/single-application)
    file(STRINGS ${single_application_rules}/files.sha256 lines)
    foreach(line IN LISTS lines)
        string(REGEX REPLACE "^[^ ]* +" "" file "${line}")
        if(file MATCHES "\\.h$")
            configure_file(${KOVAKIT_SINGLE_APPLICATION_DIR}/${file} ${headers}/${file} COPYONLY)
        else()
            file(COPY ${KOVAKIT_SINGLE_APPLICATION_DIR}/${file} DESTINATION ${sources}/published)
        endif()
    endforeach()
    foreach(file IN ITEMS qtlockedfile.cpp qtlockedfile_unix.cpp qtsingleapplication.cpp)
        configure_file(${sources}/published/${file} ${sources}/${file} COPYONLY)
    endforeach()
    set(patch_file ${single_application_rules}/receive-loop.patch)
    add_custom_command(OUTPUT ${sources}/qtlocalpeer.cpp
        COMMAND ${KOVAKIT_PATCH} --silent --output=${sources}/qtlocalpeer.cpp
            ${sources}/published/qtlocalpeer.cpp ${patch_file}
        DEPENDS ${sources}/published/qtlocalpeer.cpp ${patch_file}
        COMMENT "Patching the single-instance component" VERBATIM)

    # Apart from the library's own sources: its classes carry no export marks, and it is not held
    # to the warnings of this repository.
    add_library(kovakit-single-application OBJECT
        ${sources}/qtlocalpeer.cpp
        ${sources}/qtsingleapplication.cpp
        ${headers}/qtlocalpeer.h
        ${headers}/qtsingleapplication.h)
    set_target_properties(kovakit-single-application PROPERTIES
        AUTOMOC ON
        POSITION_INDEPENDENT_CODE ON
        CXX_CLANG_TIDY "")
    target_compile_features(kovakit-single-application PRIVATE cxx_std_17)
    target_compile_options(kovakit-single-application PRIVATE -w)
    if(KOVAKIT_SANITIZERS)
        target_compile_options(kovakit-single-application PRIVATE
            -fsanitize=${KOVAKIT_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    endif()
    target_include_directories(kovakit-single-application PRIVATE ${headers})
    target_link_libraries(kovakit-single-application PRIVATE Qt5::Widgets Qt5::Network)
    target_sources(${target} PRIVATE $<TARGET_OBJECTS:kovakit-single-application>)
endfunction()

# Adds the component to the library TARGET. Only if it is compiled there is a target
# kovakit-single-application.
function(kova_add_single_application target)
    find_path(KOVAKIT_SINGLE_APPLICATION_INCLUDE qtsingleapplication.h
        HINTS ${Qt5Widgets_INCLUDE_DIRS} PATH_SUFFIXES QtSolutions)
    # Without the 5 in its name it is one for Qt 4.
    find_library(KOVAKIT_SINGLE_APPLICATION_LIBRARY Qt5Solutions_SingleApplication-2.6)
    find_library(KOVAKIT_LOCKED_FILE_LIBRARY Qt5Solutions_LockedFile-2.4)
    mark_as_advanced(KOVAKIT_SINGLE_APPLICATION_INCLUDE KOVAKIT_SINGLE_APPLICATION_LIBRARY
        KOVAKIT_LOCKED_FILE_LIBRARY)
    if(EXISTS "${KOVAKIT_SINGLE_APPLICATION_INCLUDE}/qtlocalpeer.h"
            AND EXISTS "${KOVAKIT_SINGLE_APPLICATION_INCLUDE}/qtlockedfile.h"
            AND EXISTS "${KOVAKIT_SINGLE_APPLICATION_LIBRARY}")
        message(STATUS "Single-instance component: ${KOVAKIT_SINGLE_APPLICATION_LIBRARY}")
        kova_add_packaged_single_application(${target})
    else()
        message(STATUS "Single-instance component: compiled from its published sources")
        kova_compile_single_application(${target})
    endif()
endfunction()
