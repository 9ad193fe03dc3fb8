# The target `tidy`: clang-tidy over every source of src, tests, bench and fuzz, done again only
# where the source or a header that it includes has changed.
#
# The analyzer that follows every path takes as long again as all else, so it is run by hand:
# cmake -D KELDRIN_TIDY_CHECKS= build/tidy && cmake --build build/tidy --target tidy
find_program(KELDRIN_CLANG_TIDY NAMES clang-tidy)
set(KELDRIN_TIDY_CHECKS "-clang-analyzer-*" CACHE STRING "Added to the checks of .clang-tidy")
add_custom_target(tidy)
if(NOT KELDRIN_CLANG_TIDY)
    return()
endif()

# A plug-in keeps the checks out of system headers, where four fifths of the time would go. It needs
# the headers of libclang; without them the checks take longer and find the same.
set(tidy_tool ${PROJECT_SOURCE_DIR}/tools/tidy)
set(tidy_scope)
get_filename_component(tidy_program ${KELDRIN_CLANG_TIDY} REALPATH)
get_filename_component(tidy_llvm ${tidy_program} DIRECTORY)
get_filename_component(tidy_llvm ${tidy_llvm} DIRECTORY)
if(EXISTS ${tidy_llvm}/include/clang-tidy/ClangTidyCheck.h AND
   EXISTS ${tidy_llvm}/include/llvm/ADT/StringRef.h)
    set(tidy_scope ${PROJECT_BINARY_DIR}/tidy/project_scope.so)
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/tidy)
    add_custom_command(
        OUTPUT ${tidy_scope}
        COMMAND ${CMAKE_CXX_COMPILER} -std=c++17 -O1 -fno-rtti -fPIC -shared -w
                -isystem ${tidy_llvm}/include ${tidy_tool}/project_scope.cpp -o ${tidy_scope}
        DEPENDS ${tidy_tool}/project_scope.cpp
        COMMENT "clang-tidy plug-in")
endif()

set(tidy_rooms src tests)
if(KELDRIN_BENCH)
    list(APPEND tidy_rooms bench)
endif()
if(KELDRIN_FUZZ)
    list(APPEND tidy_rooms fuzz)
endif()
list(TRANSFORM tidy_rooms REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/\\1/*.cpp" OUTPUT_VARIABLE tidy_globs)
file(GLOB_RECURSE tidy_sources CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${tidy_globs})
# The headers that the build precompiles are read precompiled here too: half of the time otherwise.
get_property(tidy_precompiled GLOBAL PROPERTY KELDRIN_PRECOMPILED)
set(tidy_stamps)
foreach(source ${tidy_sources})
    set(stamp ${PROJECT_BINARY_DIR}/tidy/${source}.stamp)
    get_filename_component(directory ${stamp} DIRECTORY)
    file(MAKE_DIRECTORY ${directory})
    add_custom_command(
        OUTPUT ${stamp}
        COMMAND ${tidy_tool}/tidy ${PROJECT_BINARY_DIR} "${tidy_scope}" "${KELDRIN_TIDY_CHECKS}"
                ${stamp} ${PROJECT_SOURCE_DIR}/${source}
        DEPENDS ${PROJECT_SOURCE_DIR}/${source} ${PROJECT_SOURCE_DIR}/.clang-tidy ${tidy_tool}/tidy
                ${tidy_scope} ${tidy_precompiled}
        DEPFILE ${stamp}.d
        COMMENT "clang-tidy ${source}" VERBATIM)
    list(APPEND tidy_stamps ${stamp})
endforeach()
add_custom_target(tidy-sources DEPENDS ${tidy_stamps})
add_dependencies(tidy tidy-sources)
