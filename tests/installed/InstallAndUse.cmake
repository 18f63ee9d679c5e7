# SPDX-License-Identifier: Apache-2.0
function(step)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGV}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

set(flags "")
if(SANITIZE)
    set(flags "-fsanitize=address,undefined")
endif()
file(REMOVE_RECURSE "${SCRATCH_DIR}")
step(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${SCRATCH_DIR}/prefix")
step(${CMAKE_COMMAND} -S "${CONSUMER_DIR}" -B "${SCRATCH_DIR}/build" -G "${GENERATOR}"
    -D CMAKE_PREFIX_PATH=${SCRATCH_DIR}/prefix -D CMAKE_CXX_COMPILER=${COMPILER} -D CMAKE_BUILD_TYPE=${BUILD_TYPE}
    "-DCMAKE_CXX_FLAGS=${flags}" -D CMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
step(${CMAKE_COMMAND} --build "${SCRATCH_DIR}/build")
set(ENV{WINEPATH} "Z:${SCRATCH_DIR}/prefix/bin") # as Windows finds DLLs; of no meaning elsewhere
step(${EMULATOR} "${SCRATCH_DIR}/build/${PROGRAM}${SUFFIX}" ${ARGUMENT})
if(NOT output MATCHES "editor built and closed")
    message(FATAL_ERROR "the outside program said: ${output}")
endif()
