# Installs the build into a scratch prefix and runs the installed wsptool on
# the MMS example: the tool must find the installed library by itself.
#
#   BUILD_DIR  the build tree to install
#   PREFIX     the scratch prefix (emptied first)
#   EXAMPLES   the examples directory

file(REMOVE_RECURSE "${PREFIX}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${PREFIX}"
  OUTPUT_VARIABLE install_out ERROR_VARIABLE install_err RESULT_VARIABLE install_code)
if(NOT install_code EQUAL 0)
  message(FATAL_ERROR "install failed (${install_code}):\n${install_out}${install_err}")
endif()

set(tool "${PREFIX}/bin/wsptool")
if(NOT EXISTS "${tool}")
  message(FATAL_ERROR "${tool} was not installed")
endif()

execute_process(COMMAND "${tool}" decode-push --file "${EXAMPLES}/mms-notification.hex"
  OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE code)
file(READ "${EXAMPLES}/mms-notification.expected" expected)
if(NOT code EQUAL 0 OR NOT "${out}" STREQUAL "${expected}")
  message(FATAL_ERROR "installed wsptool: exit ${code}\nstdout:\n${out}\nstderr:\n${err}")
endif()
file(REMOVE_RECURSE "${PREFIX}")
