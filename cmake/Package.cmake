# The target `package` creates a portable zip, its checksum and the manifests for two package managers
# from the project's version and the changelog. Releases are built with Visual C++.

set(TAVRIN_SIGN_COMMAND "" CACHE STRING
    "A command, as a CMake list, that signs the file named by its last argument")

file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md release REGEX "^## " LIMIT_COUNT 1)
if(NOT release MATCHES "^## ${PROJECT_VERSION} - ([0-9]+-[0-9]+-[0-9]+)$")
    message(FATAL_ERROR "CHANGELOG.md must begin with the version ${PROJECT_VERSION} and its date.")
endif()
set(release_date ${CMAKE_MATCH_1})

install(TARGETS Tavrin RUNTIME DESTINATION . COMPONENT program)
install(FILES LICENSE README.md CHANGELOG.md DESTINATION . COMPONENT program)

# CPack only stages the files, and a script packs them: CPack's own zip would depend on the user and
# on the order of the files on the disk. Only packing requires Python.
find_package(Python3 COMPONENTS Interpreter)
set(TAVRIN_PACKAGE_NAME Tavrin-${PROJECT_VERSION}-windows-x64)
if(MINGW)
    string(APPEND TAVRIN_PACKAGE_NAME -mingw)
endif()
set(CPACK_PACKAGE_FILE_NAME ${TAVRIN_PACKAGE_NAME})
set(CPACK_GENERATOR External)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT ${CMAKE_CURRENT_LIST_DIR}/package_zip.cmake)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/cpack)

# Variables for the script. CPack passes on only variables with its prefix.
set(CPACK_TAVRIN_OUTPUT_DIR ${PROJECT_BINARY_DIR}/package)
set(CPACK_TAVRIN_SOURCE_DIR ${PROJECT_SOURCE_DIR})
set(CPACK_TAVRIN_PYTHON ${Python3_EXECUTABLE})
set(CPACK_TAVRIN_SIGN_COMMAND ${TAVRIN_SIGN_COMMAND})
set(CPACK_TAVRIN_RELEASE_DATE ${release_date})

include(CPack)
