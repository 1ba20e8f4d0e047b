# A manual page's SYNOPSIS must name the commands and options that PROGRAM --help names, and
# PROGRAM --version must print the project's VERSION.
execute_process(COMMAND ${PROGRAM} --help OUTPUT_VARIABLE help RESULT_VARIABLE help_status)
execute_process(COMMAND ${PROGRAM} --version OUTPUT_VARIABLE version RESULT_VARIABLE status)
string(STRIP "${version}" version)
if(NOT help_status EQUAL 0 OR NOT status EQUAL 0 OR NOT version MATCHES " ${VERSION}$")
  message(FATAL_ERROR "${NAME} --help/--version: ${help_status}/${status} '${version}'")
endif()

file(READ ${MANUAL} manual)
string(REGEX REPLACE ".*\n\\.SH SYNOPSIS\n" "" synopsis "${manual}")
string(REGEX REPLACE "\n\\.SH .*" "" synopsis "${synopsis}")
string(REPLACE "\\-" "-" synopsis "${synopsis}")

function(named_in text out)
  string(REGEX MATCHALL "${NAME} [a-z]+|--[a-z0-9][a-z0-9-]*" names "${text}")
  list(REMOVE_DUPLICATES names)
  set(${out} ${names} PARENT_SCOPE)
endfunction()
named_in("${help}" in_help)
named_in("${synopsis}" in_manual)

set(only_help ${in_help})
list(REMOVE_ITEM only_help ${in_manual})
set(only_manual ${in_manual})
list(REMOVE_ITEM only_manual ${in_help})
if(only_help OR only_manual)
  message(FATAL_ERROR "${MANUAL}: SYNOPSIS lacks [${only_help}], names beyond --help [${only_manual}]")
endif()
