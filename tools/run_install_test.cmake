# Installs the build into a scratch prefix and runs the installed wsptool on
# the installed MMS example: the tool must find the installed library by
# itself; the manual page must be installed too.
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

foreach(installed share/man/man1/wsptool.1 share/doc/tarnwspencdec/examples/mms-notification.hex
                  share/doc/tarnwspencdec/examples/push-capture.pcap)
  if(NOT EXISTS "${PREFIX}/${installed}")
    message(FATAL_ERROR "${installed} was not installed")
  endif()
endforeach()

execute_process(COMMAND "${tool}" decode-push --file "${PREFIX}/share/doc/tarnwspencdec/examples/mms-notification.hex"
  OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE code)
file(READ "${EXAMPLES}/mms-notification.expected" expected)
if(NOT code EQUAL 0 OR NOT "${out}" STREQUAL "${expected}")
  message(FATAL_ERROR "installed wsptool: exit ${code}\nstdout:\n${out}\nstderr:\n${err}")
endif()
file(REMOVE_RECURSE "${PREFIX}")
