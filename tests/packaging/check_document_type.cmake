# The document type builds into a MIME database beside the system's own definitions, is a
# sub-class of text/csv, is what the desktop entry opens, and (with gio) a .csv is recognised
# as a document by its content while any other .csv stays text/csv.
set(type application/x-sonalyx-document)
file(REMOVE_RECURSE ${WORK})
file(COPY ${DATA}/mime/sonalyx.xml /usr/share/mime/packages/freedesktop.org.xml
     DESTINATION ${WORK}/mime/packages)
set(env ${CMAKE_COMMAND} -E env XDG_DATA_HOME=${WORK} XDG_DATA_DIRS=${WORK})
execute_process(COMMAND ${env} ${UPDATE_MIME_DATABASE} ${WORK}/mime
                RESULT_VARIABLE status ERROR_VARIABLE complaints)
file(STRINGS ${WORK}/mime/subclasses parents REGEX "^${type} ")
file(READ ${DATA}/sonalyx.desktop desktop)
if(NOT status EQUAL 0 OR complaints OR NOT parents STREQUAL "${type} text/csv" OR
   NOT desktop MATCHES "\nMimeType=([^\n]*;)?${type};")
  message(FATAL_ERROR "status ${status} '${complaints}', parents '${parents}', or the desktop "
                      "entry does not open ${type}")
endif()
if(NOT GIO)
  return()
endif()

file(WRITE ${WORK}/plain.csv "Room,Seat\r\n1,2\r\n")
file(WRITE ${WORK}/resaved.csv "\"[DATE]\",,\r\n2026.06.21 16:12,,\r\n")
foreach(case "${DATA}/samples/sample-layout-9.csv=${type}" "${WORK}/resaved.csv=${type}"
             "${WORK}/plain.csv=text/csv")
  string(REPLACE "=" ";" case "${case}")
  list(GET case 0 file)
  list(GET case 1 expected)
  execute_process(COMMAND ${env} ${GIO} info -a standard::content-type ${file}
                  OUTPUT_VARIABLE info)
  if(NOT info MATCHES "content-type: ${expected}\n")
    message(FATAL_ERROR "${file} is not ${expected}: ${info}")
  endif()
endforeach()
