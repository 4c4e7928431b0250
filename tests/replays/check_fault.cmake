# Plays REPLAY with the command CALL: it must end with STATUS and say MESSAGE, a regular expression.
execute_process(COMMAND ${CALL} ${REPLAY} RESULT_VARIABLE status ERROR_VARIABLE said OUTPUT_QUIET)
if(NOT status EQUAL STATUS)
  message(FATAL_ERROR "The exit status is ${status}, not ${STATUS}:\n${said}")
endif()
if(NOT said MATCHES "${MESSAGE}")
  message(FATAL_ERROR "\"${MESSAGE}\" is not said, but:\n${said}")
endif()
