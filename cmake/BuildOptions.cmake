# SPDX-License-Identifier: MIT

# Two usage requirements that every target of this repository takes: how strictly it is compiled,
# and which of Qt's conveniences it goes without.

add_library(kovakit-build-options INTERFACE)
target_compile_features(kovakit-build-options INTERFACE cxx_std_17)
target_compile_options(kovakit-build-options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
    -Wimplicit-fallthrough
    # Qt's logging macros leave their last argument out.
    $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
if(KOVAKIT_WARNINGS_AS_ERRORS)
    target_compile_options(kovakit-build-options INTERFACE -Werror)
endif()
if(KOVAKIT_SANITIZERS)
    target_compile_options(kovakit-build-options INTERFACE
        -fsanitize=${KOVAKIT_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(kovakit-build-options INTERFACE -fsanitize=${KOVAKIT_SANITIZERS})
endif()

add_library(kovakit-qt-strictness INTERFACE)
target_compile_definitions(kovakit-qt-strictness INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING QT_DEPRECATED_WARNINGS)

# A rebuild after a change of branch or in a second checkout costs little with a compiler cache.
find_program(KOVAKIT_CCACHE ccache)
if(KOVAKIT_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros ${KOVAKIT_CCACHE})
endif()
