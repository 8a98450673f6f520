# Builds GoogleTest from its sources, because a distribution's library is for Linux, not for Windows.
# Uses the sources in GOOGLETEST_SOURCES or the installed ones; otherwise downloads a release.

include(FetchContent)

FetchContent_Declare(googletest
    URL https://github.com/google/googletest/archive/refs/tags/release-1.12.1.tar.gz
    URL_HASH SHA256=81964fe578e9bd7c94dfdb09c8e4d6e6759e19967e397dbea48d1c10e45d0df2
    DOWNLOAD_EXTRACT_TIMESTAMP FALSE
    # This directory does not exist, so FetchContent adds no targets of GoogleTest.
    SOURCE_SUBDIR sources-only)

function(tavrin_add_googletest)
    find_path(GOOGLETEST_SOURCES googletest/src/gtest-all.cc
        PATHS /usr/src/googletest
        NO_CMAKE_FIND_ROOT_PATH
        DOC "The folder that holds GoogleTest's googletest/ and googlemock/")
    if(NOT GOOGLETEST_SOURCES)
        FetchContent_MakeAvailable(googletest)
        set(GOOGLETEST_SOURCES ${googletest_SOURCE_DIR})
    endif()
    add_library(tavrin_gmock_main STATIC
        ${GOOGLETEST_SOURCES}/googletest/src/gtest-all.cc
        ${GOOGLETEST_SOURCES}/googlemock/src/gmock-all.cc
        ${GOOGLETEST_SOURCES}/googlemock/src/gmock_main.cc)
    target_compile_features(tavrin_gmock_main PUBLIC cxx_std_20)
    tavrin_compile_quickly(tavrin_gmock_main)
    target_include_directories(tavrin_gmock_main SYSTEM PUBLIC
        ${GOOGLETEST_SOURCES}/googletest/include
        ${GOOGLETEST_SOURCES}/googlemock/include)
    target_include_directories(tavrin_gmock_main PRIVATE
        ${GOOGLETEST_SOURCES}/googletest
        ${GOOGLETEST_SOURCES}/googlemock)
    if(MSVC)
        set_target_properties(tavrin_gmock_main PROPERTIES
            MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>")
    endif()
endfunction()
