# cmake --install: the programs, their manual pages, what a desktop knows of them, the examples.
include(GNUInstallDirs)

set(KELDRIN_APPLICATION internal.keldrin.keldrin) # name of the program to a desktop
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
find_program(KELDRIN_GZIP NAMES gzip)

# keldrin_compress(RESULT FILE COMMAND...): a command makes FILE; RESULT is the name of what is to
# be installed, compressed where that can be done, always to the same bytes.
function(keldrin_compress result file)
    cmake_parse_arguments(arg "" "" "COMMAND;DEPENDS" ${ARGN})
    set(made ${PROJECT_BINARY_DIR}/install/${file})
    set(compress)
    set(output ${made})
    if(KELDRIN_GZIP)
        set(output ${made}.gz)
        set(compress COMMAND ${KELDRIN_GZIP} -9nf ${made})
    endif()
    add_custom_command(OUTPUT ${output} COMMAND ${arg_COMMAND} > ${made} ${compress}
                       DEPENDS ${arg_DEPENDS} COMMENT "Making ${file}" VERBATIM)
    set(${result} ${output} PARENT_SCOPE)
endfunction()

# Each program prints its manual page, from the texts of its --help.
set(programs keldrin-batch rkeldrin)
if(KELDRIN_DESKTOP)
    list(APPEND programs keldrin)
endif()
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/install)
set(documents)
foreach(program ${programs})
    keldrin_compress(page ${program}.1 COMMAND ${program} --help=man DEPENDS ${program})
    list(APPEND documents ${page})
    install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()
keldrin_compress(changelog changelog COMMAND ${CMAKE_COMMAND} -E cat ${packaging}/changelog
                 DEPENDS ${packaging}/changelog)
keldrin_compress(news NEWS COMMAND ${CMAKE_COMMAND} -E cat ${PROJECT_SOURCE_DIR}/CHANGELOG.md
                 DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
add_custom_target(keldrin_documents ALL DEPENDS ${documents} ${changelog} ${news})

install(TARGETS ${programs} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${packaging}/copyright ${changelog} ${news} DESTINATION ${CMAKE_INSTALL_DOCDIR})
# Not what the programs have left there.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples
        REGEX "\\.(log|err)$|/examples/[^/]*\\.(std|m1d|svg|hpg|wmf|png|pdf)$|~$" EXCLUDE)
install(FILES ${packaging}/${KELDRIN_APPLICATION}.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
if(KELDRIN_DESKTOP)
    install(FILES ${packaging}/${KELDRIN_APPLICATION}.desktop
            DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES ${packaging}/${KELDRIN_APPLICATION}.metainfo.xml
            DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
    set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
    install(FILES ${packaging}/icons/keldrin.svg DESTINATION ${icons}/scalable/apps
            RENAME ${KELDRIN_APPLICATION}.svg)
    foreach(size 16 24 32 48 64 128 256)
        install(FILES ${packaging}/icons/keldrin-${size}.png
                DESTINATION ${icons}/${size}x${size}/apps RENAME ${KELDRIN_APPLICATION}.png)
    endforeach()
endif()
