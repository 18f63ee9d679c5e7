# SPDX-License-Identifier: Apache-2.0
# Starts the program with the plugin in it; program.png then shows the editor with the sample app.
set(picture "${FOLDER}/program.png")
set(report "${FOLDER}/report.txt")
file(REMOVE "${picture}" "${report}")
set(ENV{QT_PLUGIN_PATH} "${DRIVE}${FOLDER}/plugins")
set(ENV{QT_QPA_GENERIC_PLUGINS} sampleopener)
set(ENV{RPA_PROGRAM_PICTURE} "${DRIVE}${picture}")
set(ENV{RPA_PROGRAM_REPORT} "${DRIVE}${report}")
execute_process(COMMAND ${RUN} "${PROGRAM}" TIMEOUT 240 RESULT_VARIABLE result OUTPUT_VARIABLE output
    ERROR_VARIABLE output)
set(done "nothing: the plugin was not loaded")
if(EXISTS "${report}")
    file(READ "${report}" done)
endif()
if(NOT result EQUAL 0 OR NOT done MATCHES "done: close the window" OR NOT EXISTS "${picture}")
    message(FATAL_ERROR "The program ended with ${result} and said:\n${output}\nOf the steps:\n${done}")
endif()
message("${done}${picture}")
