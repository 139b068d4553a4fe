# Runs PROGRAM and compares its standard output with the file EXPECTED, in which <any> stands for any text within a
# line. Fails too if the program does.
#
#   cmake -DPROGRAM=... -DEXPECTED=... [-DEMULATOR=...] -P CheckOutput.cmake
execute_process(COMMAND ${EMULATOR} ${PROGRAM} OUTPUT_VARIABLE output RESULT_VARIABLE status)
string(REPLACE "\r\n" "\n" output "${output}")
file(READ ${EXPECTED} pattern)
string(REGEX REPLACE "([][+.*()^$?|\\\\])" "\\\\\\1" pattern "${pattern}")
string(REPLACE "<any>" "[^\n]*" pattern "${pattern}")
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} ended with status ${status} after:\n${output}")
endif()
if(NOT output MATCHES "^${pattern}$")
  message(FATAL_ERROR "${PROGRAM} printed:\n${output}\nwhich is not as in ${EXPECTED}")
endif()
