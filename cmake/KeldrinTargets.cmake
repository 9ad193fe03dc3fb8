# What every target of the project shares: warnings are errors, and floating-point
# arithmetic is exactly what the source says (no contraction, no fast-math).
add_library(keldrin_options INTERFACE)
target_compile_options(keldrin_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wdouble-promotion -Werror
    -ffp-contract=off)
# Reserved names: clang finds them at no cost, clang-tidy in a tenth of its time.
target_compile_options(keldrin_options INTERFACE
    $<$<CXX_COMPILER_ID:Clang>:-Wreserved-identifier;-Wreserved-macro-identifier>)
# Version 12 of g++ warns of std::string's own operator+ when it inlines it; others do not.
target_compile_options(keldrin_options INTERFACE
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
target_include_directories(keldrin_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(KELDRIN_SANITIZE)
    set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_options(keldrin_options INTERFACE ${sanitizers})
    target_link_options(keldrin_options INTERFACE ${sanitizers})
endif()
# The linker of LLVM, where it is installed, takes a third of the time. What users get is linked by
# the system's own.
find_program(KELDRIN_QUICK_LINKER NAMES ld.lld)
set(KELDRIN_QUICK_LINK)
if(KELDRIN_QUICK_LINKER)
    set(KELDRIN_QUICK_LINK -fuse-ld=lld)
endif()
if(KELDRIN_SANITIZE)
    target_link_options(keldrin_options INTERFACE ${KELDRIN_QUICK_LINK})
endif()
if(KELDRIN_FUZZ)
    target_compile_options(keldrin_options INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(keldrin_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# The presets for whole builds compile the files of a folder joined, up to sixteen at a time, which
# takes a third of the time: names in anonymous namespaces must differ within a folder. clang-tidy reads
# each file by itself. Precompiled headers save a third again. Version 12 of g++ serves only the
# tests with them: it warns of std::string's own operations where it inlines them from a precompiled
# header, and fails on Qt's. No build finds every forgotten include; tools/check-includes does.
set(KELDRIN_COMMON_HEADERS <algorithm> <array> <charconv> <cmath> <filesystem> <functional>
    <limits> <map> <memory> <optional> <set> <span> <string> <string_view> <unordered_map> <vector>)

# keldrin_precompile(TARGET FIRST HEADERS...): the target shares the precompiled headers of FIRST.
function(keldrin_precompile target first)
    if(NOT KELDRIN_PRECOMPILE)
        return()
    elseif(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT first STREQUAL "keldrin_test_base")
        return()
    elseif(target STREQUAL first)
        target_precompile_headers(${target} PRIVATE ${ARGN})
        set_property(GLOBAL APPEND PROPERTY KELDRIN_PRECOMPILED
                     ${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}.dir/cmake_pch.hxx.pch)
    else()
        target_precompile_headers(${target} REUSE_FROM ${first})
    endif()
endfunction()

# keldrin_floor(NAME SOURCES ... BELOW ... [OWN_OPTIONS | OWN_HEADERS ...] [UNFUZZED]): the library keldrin_NAME
# of the folder src/NAME. BELOW lists the folders that it may include from, which
# tools/check-floors checks. A folder with compiler options of its own says so: its precompiled
# headers are its own, and so are those of one that lists more, as one that uses Qt does. UNFUZZED is
# for a folder that no fuzz target links.
function(keldrin_floor name)
    cmake_parse_arguments(arg "OWN_OPTIONS;UNFUZZED" "" "SOURCES;BELOW;OWN_HEADERS" ${ARGN})
    add_library(keldrin_${name} STATIC ${arg_SOURCES})
    list(TRANSFORM arg_BELOW PREPEND keldrin_)
    target_link_libraries(keldrin_${name} PUBLIC keldrin_options ${arg_BELOW})
    if(arg_UNFUZZED AND KELDRIN_SANITIZE AND KELDRIN_FUZZ)
        target_compile_options(keldrin_${name} PRIVATE -fno-sanitize=fuzzer-no-link)
    endif()
    set(headers_of keldrin_base)
    if(arg_OWN_HEADERS OR arg_OWN_OPTIONS)
        set(headers_of keldrin_${name})
    endif()
    keldrin_precompile(keldrin_${name} ${headers_of} ${KELDRIN_COMMON_HEADERS} ${arg_OWN_HEADERS})
endfunction()

# keldrin_program(NAME SOURCES ... USES ...): a program that users run. All of them lie in one folder
# of the build tree, as they do when installed, so that each finds the others beside itself.
function(keldrin_program name)
    cmake_parse_arguments(arg "" "" "SOURCES;USES" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    list(TRANSFORM arg_USES PREPEND keldrin_)
    target_link_libraries(${name} PRIVATE ${arg_USES})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endfunction()

# keldrin_test(NAME SOURCES ... USES ... [OWN_HEADERS ...]): one GoogleTest program for one folder;
# OWN_HEADERS as above.
function(keldrin_test name)
    cmake_parse_arguments(arg "" "" "SOURCES;USES;OWN_HEADERS" ${ARGN})
    add_executable(keldrin_test_${name} ${arg_SOURCES})
    list(TRANSFORM arg_USES PREPEND keldrin_)
    target_link_libraries(keldrin_test_${name} PRIVATE ${arg_USES} GTest::gmock_main)
    target_include_directories(keldrin_test_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_options(keldrin_test_${name} PRIVATE ${KELDRIN_QUICK_LINK})
    # The tests themselves run once; compiling them without optimisation halves the build.
    target_compile_options(keldrin_test_${name} PRIVATE -O0)
    if(KELDRIN_SANITIZE AND KELDRIN_FUZZ) # no fuzz target links the tests
        target_compile_options(keldrin_test_${name} PRIVATE -fno-sanitize=fuzzer-no-link)
    endif()
    target_link_libraries(keldrin_test_${name} PRIVATE keldrin_test_support)
    if(arg_OWN_HEADERS)
        keldrin_precompile(keldrin_test_${name} keldrin_test_${name} <gmock/gmock.h> <filesystem>
                           ${arg_OWN_HEADERS})
    else()
        keldrin_precompile(keldrin_test_${name} keldrin_test_base <gmock/gmock.h> <filesystem>)
    endif()
    # One process for all tests of a folder: a start for each took half of the time. The sanitized
    # ones run in another order, so that none lives on what another has left.
    set(order)
    if(KELDRIN_SANITIZE)
        set(order --gtest_shuffle --gtest_random_seed=1)
    endif()
    add_test(NAME unit.${name} COMMAND keldrin_test_${name} --gtest_brief=1 ${order})
endfunction()
