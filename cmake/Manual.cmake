# The manual: a page of HTML and a text for each chapter of docs/manual, made by pandoc into
# ${PROJECT_BINARY_DIR}/manual, where the programs of the build tree find it. Without pandoc there are
# no pages, and the Markdown serves as text.
find_program(KELDRIN_PANDOC NAMES pandoc)

set(manual_source ${PROJECT_SOURCE_DIR}/docs/manual)
set(manual ${PROJECT_BINARY_DIR}/manual)
# The chapters in their order; src/base/manual.h names the same.
set(chapters index first-hour window flagging inversion models batch machines messages physics
             formats keywords scenarios)

file(MAKE_DIRECTORY ${manual})
set(manual_files)
if(KELDRIN_PANDOC)
    set(links)
    foreach(chapter ${chapters})
        file(STRINGS ${manual_source}/${chapter}.md title LIMIT_COUNT 1)
        set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
                     ${manual_source}/${chapter}.md)
        string(REGEX REPLACE "^# " "" title "${title}")
        string(APPEND links "<a href=\"${chapter}.html\">${title}</a>\n")
    endforeach()
    file(CONFIGURE OUTPUT ${manual}/links.html CONTENT "<nav>\n${links}</nav>\n" @ONLY)
    set(style ${manual_source}/style)
    foreach(chapter ${chapters})
        set(from ${KELDRIN_PANDOC} --from markdown+gfm_auto_identifiers-implicit_figures
                 ${manual_source}/${chapter}.md)
        add_custom_command(
            OUTPUT ${manual}/${chapter}.html ${manual}/${chapter}.txt
            COMMAND ${from} --to html5 --mathml --standalone --metadata document-css=false --metadata lang=en
                    --lua-filter ${style}/page.lua
                    --include-in-header ${style}/style.html
                    --include-before-body ${manual}/links.html --output ${manual}/${chapter}.html
            COMMAND ${from} --to plain --columns 80 --lua-filter ${style}/text.lua
                    --output ${manual}/${chapter}.txt
            DEPENDS ${manual_source}/${chapter}.md ${style}/page.lua ${style}/style.html
                    ${style}/text.lua
                    ${manual}/links.html
            COMMENT "Manual: ${chapter}" VERBATIM)
        list(APPEND manual_files ${manual}/${chapter}.html ${manual}/${chapter}.txt)
    endforeach()
    file(GLOB pictures RELATIVE ${manual_source} CONFIGURE_DEPENDS ${manual_source}/pictures/*)
    foreach(picture ${pictures})
        add_custom_command(
            OUTPUT ${manual}/${picture}
            COMMAND ${CMAKE_COMMAND} -E copy ${manual_source}/${picture} ${manual}/${picture}
            DEPENDS ${manual_source}/${picture} VERBATIM)
        list(APPEND manual_files ${manual}/${picture})
    endforeach()
    install(DIRECTORY ${manual}/pictures DESTINATION ${CMAKE_INSTALL_DOCDIR}/manual)
    install(DIRECTORY ${manual}/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/manual
            FILES_MATCHING PATTERN "*.html" PATTERN "pictures" EXCLUDE PATTERN "links.html" EXCLUDE)
else()
    foreach(chapter ${chapters})
        add_custom_command(
            OUTPUT ${manual}/${chapter}.txt
            COMMAND ${CMAKE_COMMAND} -E copy ${manual_source}/${chapter}.md ${manual}/${chapter}.txt
            DEPENDS ${manual_source}/${chapter}.md VERBATIM)
        list(APPEND manual_files ${manual}/${chapter}.txt)
    endforeach()
endif()
install(DIRECTORY ${manual}/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/manual
        FILES_MATCHING PATTERN "*.txt" PATTERN "pictures" EXCLUDE)
add_custom_target(keldrin_manual ALL DEPENDS ${manual_files})
