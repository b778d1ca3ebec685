# The project version for C++ and the Windows resources. Hosts get major * 1000 + minor * 100 + patch.
math(EXPR TESSARINE_VERSION_NUMBER
    "${PROJECT_VERSION_MAJOR} * 1000 + ${PROJECT_VERSION_MINOR} * 100 + ${PROJECT_VERSION_PATCH}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/Version.h.in ${PROJECT_BINARY_DIR}/plugin/Version.h @ONLY)

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS CHANGELOG.md)
string(REPLACE "." "\\." version ${PROJECT_VERSION})
file(STRINGS CHANGELOG.md heading REGEX "^## \\[${version}\\]")
if(NOT heading)
    message(FATAL_ERROR "CHANGELOG.md has no heading for version ${PROJECT_VERSION}; add: ## [${PROJECT_VERSION}]")
endif()
