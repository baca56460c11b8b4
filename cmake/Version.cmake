# TALLYSCOPE_CHANGELOG_VERSION and TALLYSCOPE_CHANGELOG_DATE: those of the newest entry of CHANGELOG.md, the one place
# that names the version.
set(changelog ${CMAKE_CURRENT_SOURCE_DIR}/CHANGELOG.md)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${changelog})
file(STRINGS ${changelog} heading LIMIT_COUNT 1 REGEX "^## [0-9]+\\.[0-9]+\\.[0-9]+ - [0-9-]+$")
if(NOT heading MATCHES "^## ([0-9.]+) - ([0-9-]+)$")
  message(FATAL_ERROR "CHANGELOG.md has no heading like '## 1.2.3 - 2026-01-31'")
endif()
set(TALLYSCOPE_CHANGELOG_VERSION ${CMAKE_MATCH_1})
set(TALLYSCOPE_CHANGELOG_DATE ${CMAKE_MATCH_2})
