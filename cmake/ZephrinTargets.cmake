# SPDX-License-Identifier: GPL-3.0-or-later
# How every target of this tree is built: language level, warnings, sanitizers, compiler cache.
include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# What a shared library shows is marked where it is declared; the rest may be inlined freely.
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# Programming errors (a block above SIGNAL_MAX_SIZE, a missing owner) stop the program in every
# build, so assert() stays on: no NDEBUG.
set(CMAKE_CXX_FLAGS_RELEASE "-O3")

# Of a compilation a twentieth went into looking for memory to give back; now it may have 256 MiB.
add_compile_options("$<$<CXX_COMPILER_ID:GNU>:--param=ggc-min-heapsize=262144>")

# The place that such a stop and a checked connection tell is one in this tree, wherever the tree
# was built; the debugger still finds the sources.
add_compile_options("-fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=")

# Calls into libraries are looked up at the start, and nobody can turn them elsewhere afterwards.
add_link_options(LINKER:-z,relro,-z,now)

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # Without these it takes no compilation that uses a precompiled header.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND};-E;env;CCACHE_SLOPPINESS=pch_defines,time_macros;${CCACHE}")
    add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
endif()

set(ZEPHRIN_SANITIZE "" CACHE STRING "Sanitizers for -fsanitize=, for example address,undefined")
if(ZEPHRIN_SANITIZE)
    # Undefined behaviour ends the program like any other report: a line on the screen fails no test.
    # The sanitizers' extra paths make g++ 12 see an overflow inside the fmt headers.
    add_compile_options(-fsanitize=${ZEPHRIN_SANITIZE} -fno-sanitize-recover=all
                        -fno-omit-frame-pointer
                        $<$<CXX_COMPILER_ID:GNU>:-Wno-error=stringop-overflow>)
    add_link_options(-fsanitize=${ZEPHRIN_SANITIZE})
endif()

add_library(zephrin_warnings INTERFACE)
# clang does not know "GCC ivdep", which lets g++ make vectors without a check for overlap.
target_compile_options(zephrin_warnings INTERFACE -Wall -Wextra -Werror
                       $<$<CXX_COMPILER_ID:Clang>:-Wno-unknown-pragmas>)

# Half the time of a build goes into reading the same headers again, so they are read beforehand:
# those of Qt's core and the standard library once for all that links vm_library, and together with
# those of the test framework once for all tests. The owner of such a header has fewer macros
# defined than its users, as a compiler refuses it otherwise. A source includes what it uses all the
# same; the preset "debug" builds without and shows what is missing.
set(ZEPHRIN_COMMON_HEADERS
    <QFile> <QObject> <QSettings> <QString> <QStringList> <QTimer> <QVariant> <QVector>
    <algorithm> <array> <atomic> <chrono> <cmath> <functional> <memory> <mutex> <optional> <thread>
    <vector>)

# zephrin_library(<name> [SHARED] [PRECOMPILED] SOURCES ... [LIBS public libraries ...])
# Headers are found from libs/, as in "DspCore/filters/FastFir.h". PRECOMPILED is for libraries that
# link vm_library.
function(zephrin_library name)
    cmake_parse_arguments(ARG "SHARED;PRECOMPILED" "" "SOURCES;LIBS" ${ARGN})
    if(ARG_SHARED)
        add_library(${name} SHARED ${ARG_SOURCES})
    else()
        add_library(${name} STATIC ${ARG_SOURCES})
    endif()
    target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}/libs")
    target_link_libraries(${name} PUBLIC ${ARG_LIBS} PRIVATE zephrin_warnings)
    if(ARG_PRECOMPILED)
        target_precompile_headers(${name} REUSE_FROM vm_library)
    endif()
endfunction()

# host_room(<name> SOURCES ... LIBS ...): one room of the host, a library host_<name>. Headers are
# found from host/, as in "stream/StreamLedger.h".
function(host_room name)
    zephrin_library(host_${name} PRECOMPILED ${ARGN})
    target_include_directories(host_${name} PUBLIC "${CMAKE_SOURCE_DIR}" "${CMAKE_SOURCE_DIR}/host")
    set_target_properties(host_${name} PROPERTIES AUTOMOC ON)
endfunction()

# zephrin_translations(<target> <resource> <name>): the translations/<name>_*.ts in the target, each as
# :/translations/<name>_CODE.qm. Without Qt's tool for it the program speaks English only.
find_package(Qt5 5.15 REQUIRED COMPONENTS Core)
get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
get_filename_component(qt_tools "${qmake}" DIRECTORY)
find_program(LRELEASE lrelease HINTS "${qt_tools}")
find_program(LUPDATE lupdate HINTS "${qt_tools}")
if(NOT LRELEASE)
    message(WARNING "lrelease of Qt 5 is not there (Debian: qttools5-dev-tools): no translations")
endif()
function(zephrin_translations target resource name)
    set(folder "${CMAKE_CURRENT_BINARY_DIR}/translations")
    set(list "<RCC><qresource prefix=\"/translations\">\n")
    if(LRELEASE)
        file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/translations/${name}_*.ts")
    endif()
    foreach(source IN LISTS sources)
        get_filename_component(file "${source}" NAME_WE)
        add_custom_command(OUTPUT "${folder}/${file}.qm" DEPENDS "${source}"
            COMMAND "${LRELEASE}" -silent "${source}" -qm "${folder}/${file}.qm" VERBATIM)
        list(APPEND outputs "${folder}/${file}.qm")
        string(APPEND list "<file>${file}.qm</file>\n")
    endforeach()
    string(APPEND list "</qresource></RCC>\n")
    file(CONFIGURE OUTPUT "${folder}/${resource}.qrc" CONTENT "${list}")
    add_custom_command(OUTPUT "${folder}/${resource}.cpp"
        DEPENDS "${folder}/${resource}.qrc" ${outputs}
        COMMAND Qt5::rcc --name ${resource} -o "${folder}/${resource}.cpp" "${folder}/${resource}.qrc"
        VERBATIM)
    target_sources(${target} PRIVATE "${folder}/${resource}.cpp")
    set_source_files_properties("${folder}/${resource}.cpp" PROPERTIES
        SKIP_AUTOGEN ON SKIP_PRECOMPILE_HEADERS ON)
endfunction()

# zephrin_test(<name> [WIDGETS] SOURCES ... LIBS ...): one test program of a folder, run with a Qt
# core application around it so that timers, threads and queued signals work; with WIDGETS it is
# one that has widgets, too. The longest have a COST, in seconds, by which they are started first.
function(zephrin_test name)
    cmake_parse_arguments(ARG "WIDGETS" "" "SOURCES;LIBS" ${ARGN})
    if(ARG_WIDGETS)
        # Found before the main() in the library of test helpers.
        list(APPEND ARG_SOURCES "${CMAKE_SOURCE_DIR}/tests/support/WidgetMain.cpp")
        list(APPEND ARG_LIBS Qt5::Widgets)
    endif()
    if(ZEPHRIN_SANITIZE)
        list(APPEND ARG_SOURCES "${CMAKE_SOURCE_DIR}/tests/support/Suppressions.cpp")
    endif()
    add_executable(test_${name} ${ARG_SOURCES})
    target_link_libraries(test_${name} PRIVATE test_support ${ARG_LIBS} zephrin_warnings)
    target_precompile_headers(test_${name} REUSE_FROM test_support)
    add_dependencies(tests test_${name})
    add_test(NAME ${name} COMMAND test_${name})
    # Numbers are written in the way of the desktop's language.
    set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT LC_ALL=C.UTF-8)
endfunction()

# zephrin_bench(<name> SOURCES ... LIBS ...): one benchmark program of a folder.
function(zephrin_bench name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
    add_executable(bench_${name} ${ARG_SOURCES})
    add_dependencies(benchmarks bench_${name})
    target_include_directories(bench_${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
    target_link_libraries(bench_${name} PRIVATE ${ARG_LIBS} benchmark::benchmark_main
                                                zephrin_warnings)
endfunction()
