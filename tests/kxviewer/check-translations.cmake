# SPDX-License-Identifier: Apache-2.0
# Every text of the viewer, and of the windows it shows, is translated: nothing is unfinished in the files of the tree,
# and nothing would be new in them. Needs LRELEASE, beside which lupdate lies, and SOURCE, the tree.
get_filename_component(tools "${LRELEASE}" DIRECTORY)
set(folder "${CMAKE_CURRENT_BINARY_DIR}/translations-checked")
file(REMOVE_RECURSE "${folder}")
file(COPY "${SOURCE}/apps/kxviewer/translations/" DESTINATION "${folder}")
file(GLOB viewer "${SOURCE}/apps/kxviewer/*.cpp" "${SOURCE}/apps/kxviewer/*.h")

function(check name)
    set(file "${folder}/${name}.ts")
    execute_process(COMMAND "${tools}/lupdate" -silent -locations none ${ARGN} -ts "${file}"
        ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
    file(STRINGS "${file}" unfinished REGEX "type=\"unfinished\"|<translation></translation>")
    list(LENGTH unfinished count)
    if(count)
        message(SEND_ERROR "${name}.ts: ${count} texts aren't translated; lupdate and linguist find them")
    endif()
endfunction()

check(kxviewer_de ${viewer} -target-language de)
check(kxviewer_en -pluralonly ${viewer} -source-language en -target-language en)
check(windows_de "${SOURCE}/KxApi_GUI_qt" -target-language de)
