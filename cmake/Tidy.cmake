# The target `tidy`: clang-tidy over every source, done again only where something has changed.
# A changed header counts as a change of every source.
# The analyzer that follows every path takes as long again as all else, so it is run by hand:
# cmake -D KELDRIN_TIDY_CHECKS= build/release
find_program(KELDRIN_CLANG_TIDY NAMES clang-tidy)
set(KELDRIN_TIDY_CHECKS "-clang-analyzer-*" CACHE STRING "Added to the checks of .clang-tidy")
add_custom_target(tidy)
if(KELDRIN_CLANG_TIDY)
    file(GLOB_RECURSE tidy_sources CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}
         ${PROJECT_SOURCE_DIR}/src/*.cpp)
    file(GLOB_RECURSE tidy_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*.h)
    set(tidy_stamps)
    foreach(source ${tidy_sources})
        set(stamp ${PROJECT_BINARY_DIR}/tidy/${source}.stamp)
        get_filename_component(directory ${stamp} DIRECTORY)
        file(MAKE_DIRECTORY ${directory})
        add_custom_command(
            OUTPUT ${stamp}
            COMMAND ${KELDRIN_CLANG_TIDY} --quiet "--checks=${KELDRIN_TIDY_CHECKS}" --extra-arg=-Wno-unknown-warning-option -p ${PROJECT_BINARY_DIR}
                    ${PROJECT_SOURCE_DIR}/${source}
            COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
            DEPENDS ${PROJECT_SOURCE_DIR}/${source} ${tidy_headers}
                    ${PROJECT_SOURCE_DIR}/.clang-tidy
            COMMENT "clang-tidy ${source}")
        list(APPEND tidy_stamps ${stamp})
    endforeach()
    add_custom_target(tidy-sources DEPENDS ${tidy_stamps})
    add_dependencies(tidy tidy-sources)
endif()
