# SPDX-License-Identifier: MIT

# Adds QtSingleApplication, QtLocalPeer and QtLockedFile to the library.
#
# Its published sources are taken from a cache folder outside of the build tree, fetched into it
# when it does not hold them, checked by their hashes and compiled into the library. QtLocalPeer,
# through which the processes meet, is the library's own (src/kovakit-qt/single-application): as
# published it can be blocked and overheard by other users of the machine. For the same reason a
# packaged copy of the whole component is not used.

set(single_application_rules ${CMAKE_CURRENT_LIST_DIR}/single-application)
set(single_application_script ${PROJECT_SOURCE_DIR}/scripts/fetch-single-application)

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

# Adds the component to the library TARGET.
function(kova_add_single_application target)
    kova_check_single_application_sources(${KOVAKIT_SINGLE_APPLICATION_DIR})

    set(sources ${PROJECT_BINARY_DIR}/single-application)
    set(headers ${generated_include_dir}/kovakit-qt/single-application)
    file(STRINGS ${single_application_rules}/files.sha256 lines)
    foreach(line IN LISTS lines)
        string(REGEX REPLACE "^[^ ]* +" "" file "${line}")
        if(file MATCHES "\\.h$")
            configure_file(${KOVAKIT_SINGLE_APPLICATION_DIR}/${file} ${headers}/${file} COPYONLY)
        else()
            configure_file(${KOVAKIT_SINGLE_APPLICATION_DIR}/${file} ${sources}/${file} COPYONLY)
        endif()
    endforeach()

    # Apart from the library's own sources: its classes carry no export marks, and it is not held
    # to the warnings of this repository.
    add_library(kovakit-single-application OBJECT
        ${single_application_rules}/locked-file.cpp
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
    target_include_directories(kovakit-single-application PRIVATE ${headers} ${sources})
    target_link_libraries(kovakit-single-application PRIVATE Qt5::Widgets Qt5::Network)
    target_sources(${target} PRIVATE $<TARGET_OBJECTS:kovakit-single-application>)
endfunction()
