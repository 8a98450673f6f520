# GoogleTest, built for the target from its sources: a distribution's library is
# for the machine that builds, not for Windows.

function(tavrin_add_googletest)
    find_path(GOOGLETEST_SOURCES googletest/src/gtest-all.cc
        PATHS /usr/src/googletest
        NO_CMAKE_FIND_ROOT_PATH
        REQUIRED
        DOC "The folder that holds GoogleTest's googletest/ and googlemock/")
    add_library(tavrin_gmock_main STATIC
        ${GOOGLETEST_SOURCES}/googletest/src/gtest-all.cc
        ${GOOGLETEST_SOURCES}/googlemock/src/gmock-all.cc
        ${GOOGLETEST_SOURCES}/googlemock/src/gmock_main.cc)
    target_compile_features(tavrin_gmock_main PUBLIC cxx_std_20)
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
