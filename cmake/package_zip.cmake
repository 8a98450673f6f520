# CPack runs this script after staging. Creates the zip, its checksum and the manifests.

set(staged ${CPACK_TEMPORARY_DIRECTORY})
set(output ${CPACK_TAVRIN_OUTPUT_DIR})
set(zip ${CPACK_PACKAGE_FILE_NAME}.zip)

if(CPACK_TAVRIN_SIGN_COMMAND)
    execute_process(COMMAND ${CPACK_TAVRIN_SIGN_COMMAND} ${staged}/Tavrin.exe
        COMMAND_ERROR_IS_FATAL ANY)
endif()

# Every file gets the time in SOURCE_DATE_EPOCH, else that of the commit, else 1980-01-01, the earliest
# that a zip can store.
set(seconds $ENV{SOURCE_DATE_EPOCH})
if(NOT seconds)
    execute_process(COMMAND git log -1 --format=%ct
        WORKING_DIRECTORY ${CPACK_TAVRIN_SOURCE_DIR}
        OUTPUT_VARIABLE seconds OUTPUT_STRIP_TRAILING_WHITESPACE
        RESULT_VARIABLE failure ERROR_QUIET)
    if(failure)
        set(seconds 315532800)
    endif()
endif()

file(MAKE_DIRECTORY ${output})
execute_process(
    COMMAND ${CPACK_TAVRIN_PYTHON} ${CPACK_TAVRIN_SOURCE_DIR}/tools/portable_zip.py
        ${output}/${zip} ${staged} ${seconds}
    COMMAND_ERROR_IS_FATAL ANY)

# Variables of the manifest templates.
file(SHA256 ${output}/${zip} SHA256)
set(VERSION ${CPACK_PACKAGE_VERSION})
set(DATE ${CPACK_TAVRIN_RELEASE_DATE})
set(URL https://tavrin.example.org/releases/${VERSION}/${zip})

file(WRITE ${output}/${zip}.sha256 "${SHA256}  ${zip}\n")
set(templates ${CPACK_TAVRIN_SOURCE_DIR}/packaging)
file(GLOB_RECURSE manifests RELATIVE ${templates} ${templates}/*.in)
foreach(manifest IN LISTS manifests)
    string(REGEX REPLACE "\\.in$" "" name ${manifest})
    configure_file(${templates}/${manifest} ${output}/${name} @ONLY NEWLINE_STYLE LF)
endforeach()
