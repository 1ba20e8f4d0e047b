# The newest release in the AppStream metadata and in the package's changelog is VERSION.
file(READ ${DATA}/metainfo/com.veltrona.sonalyx.metainfo.xml metainfo)
string(REGEX MATCH "<release version=\"([^\"]*)\"" release "${metainfo}")
set(release "${CMAKE_MATCH_1}")
file(STRINGS ${CHANGELOG} top LIMIT_COUNT 1)
if(NOT release STREQUAL VERSION OR NOT top MATCHES "^sonalyx \\(${VERSION}\\) ")
  message(FATAL_ERROR "newest release '${release}', changelog '${top}', not ${VERSION}")
endif()
