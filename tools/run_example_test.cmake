# Runs wsptool once (or twice, piped) and checks what it did.
#
#   TOOL          the wsptool executable
#   ARGS          its arguments, joined with "|" (empty: no arguments)
#   PIPE_TO       optional: arguments of a second run fed with the first's
#                 output, joined with "|"; the checks then apply to it
#   EXIT          the expected exit code
#   EXPECTED      optional: a file that standard output must equal exactly
#   STDOUT_REGEX  optional: a pattern that standard output must match
#   STDERR_REGEX  optional: a pattern that standard error must match
#   EXPECTED_STDERR optional: a file that standard error must equal exactly
#   STDIN         optional: a file given as standard input (default: empty)

foreach(required TOOL EXIT)
  if(NOT DEFINED ${required} OR "${${required}}" STREQUAL "")
    message(FATAL_ERROR "run_example_test: ${required} is not set")
  endif()
endforeach()

# Each argument becomes a bracket argument, so that blanks and ";" inside
# one argument reach the tool unchanged.
function(bracketed out joined)
  set(result "")
  if(NOT "${joined}" STREQUAL "")
    string(REPLACE "|" "]==] [==[" inner "${joined}")
    set(result "[==[${inner}]==]")
  endif()
  set(${out} "${result}" PARENT_SCOPE)
endfunction()

bracketed(first "${ARGS}")
set(commands "COMMAND [==[${TOOL}]==] ${first}")
if(NOT "${PIPE_TO}" STREQUAL "")
  bracketed(second "${PIPE_TO}")
  string(APPEND commands " COMMAND [==[${TOOL}]==] ${second}")
endif()
if("${STDIN}" STREQUAL "")
  set(STDIN /dev/null)
endif()

cmake_language(EVAL CODE "
  execute_process(${commands}
    INPUT_FILE [==[${STDIN}]==]
    OUTPUT_VARIABLE out
    ERROR_VARIABLE err
    RESULTS_VARIABLE codes)")

# With a pipe, the last command's exit code decides; an earlier failure is
# reported as well.
list(POP_BACK codes code)
foreach(c IN LISTS codes)
  if(NOT c STREQUAL "0")
    message(FATAL_ERROR "the first command of the pipe exited with ${c}\nstderr:\n${err}")
  endif()
endforeach()

set(failed "")
if("${err}" MATCHES "Sanitizer|runtime error:")
  string(APPEND failed "a sanitizer reported an error\n")
endif()
if(NOT "${code}" STREQUAL "${EXIT}")
  string(APPEND failed "exit code ${code}, expected ${EXIT}\n")
endif()
# Appends to `failed` when `actual` differs from the content of `file`.
function(compare_with_file label actual file)
  if("${file}" STREQUAL "")
    return()
  endif()
  file(READ "${file}" expected)
  if(NOT "${actual}" STREQUAL "${expected}")
    set(failed "${failed}${label} differs from ${file}\n--- expected:\n${expected}--- got:\n${actual}---\n" PARENT_SCOPE)
  endif()
endfunction()
compare_with_file("standard output" "${out}" "${EXPECTED}")
compare_with_file("standard error" "${err}" "${EXPECTED_STDERR}")
if(NOT "${STDOUT_REGEX}" STREQUAL "" AND NOT "${out}" MATCHES "${STDOUT_REGEX}")
  string(APPEND failed "standard output does not match [${STDOUT_REGEX}]:\n${out}\n")
endif()
if(NOT "${STDERR_REGEX}" STREQUAL "" AND NOT "${err}" MATCHES "${STDERR_REGEX}")
  string(APPEND failed "standard error does not match [${STDERR_REGEX}]:\n${err}\n")
endif()

if(NOT "${failed}" STREQUAL "")
  message(FATAL_ERROR "${failed}stderr:\n${err}")
endif()
