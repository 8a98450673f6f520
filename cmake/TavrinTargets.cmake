# The compile options of all targets, and functions for each kind of target.

include(GoogleTestSources)
include(PrecompiledHeaders)

cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH TAVRIN_SOURCE_DIR)

# Tests make functions of the service throw. These are extern "C", and /EHsc, CMake's default, lets
# Visual C++ assume that such functions never throw.
if(MSVC)
    string(REPLACE /EHsc /EHs CMAKE_CXX_FLAGS "${CMAKE_CXX_FLAGS}")
endif()

# C++20 without extensions, warnings as errors, only system DLLs at run time.
function(tavrin_compile_options target)
    target_compile_features(${target} PRIVATE cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_definitions(${target} PRIVATE
        UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN STRICT
        WINVER=0x0A00 _WIN32_WINNT=0x0A00)
    if(MSVC)
        target_compile_options(${target} PRIVATE
            $<$<COMPILE_LANGUAGE:CXX>:/W4 /WX /permissive- /utf-8 /Zc:__cplusplus /guard:cf>
            # No warnings for the headers of Windows and GoogleTest.
            $<$<COMPILE_LANGUAGE:CXX>:/external:anglebrackets /external:W0>)
        # Silences MSVC's deprecation warnings for standard CRT functions.
        target_compile_definitions(${target} PRIVATE _CRT_SECURE_NO_WARNINGS)
        set_target_properties(${target} PROPERTIES
            MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>")
        # CFG, CET, ASLR, DEP, and no link timestamp, for reproducible builds.
        target_link_options(${target} PRIVATE /guard:cf /CETCOMPAT
            /DYNAMICBASE /HIGHENTROPYVA /NXCOMPAT $<$<CONFIG:Release>:/Brepro>)
    else()
        target_compile_options(${target} PRIVATE
            $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror>
            # g++ does not include this warning in -Wconversion for C++.
            $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-Wno-sign-conversion>)
        # Lets the linker drop unused code of the static standard library.
        target_compile_options(${target} PRIVATE
            $<$<COMPILE_LANGUAGE:CXX>:-ffunction-sections -fdata-sections>)
    endif()
    if(MINGW)
        target_link_options(${target} PRIVATE -static -Wl,--gc-sections)
        # As for MSVC, without CFG and CET, which g++ does not support here.
        target_link_options(${target} PRIVATE
            -Wl,--dynamicbase,--high-entropy-va,--nxcompat,--no-insert-timestamp)
        # The linker's default subsystem version is Windows XP's, which changes the window frames.
        target_link_options(${target} PRIVATE
            -Wl,--major-subsystem-version,10,--minor-subsystem-version,0)
    endif()
endfunction()

# tavrin_add_library(<name> SOURCES <files> [DEPENDS <libraries>])
# One static library for one folder of src/.
function(tavrin_add_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    tavrin_compile_options(${name})
    target_include_directories(${name} PUBLIC ${TAVRIN_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${ARG_DEPENDS})
endfunction()

# tavrin_add_manifest(<program>)
# Embeds the program's manifest in a test program. The linker must not add a second one.
function(tavrin_add_manifest program)
    set(script ${TAVRIN_SOURCE_DIR}/tests/support/test_program.rc)
    set(generated ${PROJECT_BINARY_DIR}/generated)
    set_source_files_properties(${script} PROPERTIES OBJECT_DEPENDS ${generated}/tavrin.manifest)
    target_sources(${program} PRIVATE ${script})
    target_include_directories(${program} PRIVATE ${generated})
    if(MSVC)
        target_link_options(${program} PRIVATE /MANIFEST:NO)
    endif()
endfunction()

# tavrin_compile_quickly(<target>)
# For code that is compiled more often than it runs. -O0 would keep many inline functions, which
# slows down linking.
function(tavrin_compile_quickly target)
    if(NOT MSVC)
        target_compile_options(${target} PRIVATE -O1)
    endif()
endfunction()

# tavrin_add_program(<name> SOURCES <files> [DEPENDS <libraries>] [SERVICE])
# Adds a GoogleTest program next to the staged exe and replay service. SERVICE links it with the
# replay service, to control faults and read the ledger.
function(tavrin_add_program name)
    cmake_parse_arguments(ARG "SERVICE" "" "SOURCES;DEPENDS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    tavrin_compile_options(${name})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY $<1:${TAVRIN_STAGE_DIR}>)
    target_include_directories(${name} PRIVATE ${TAVRIN_SOURCE_DIR} ${TAVRIN_SOURCE_DIR}/src)
    if(WIN32)
        tavrin_add_manifest(${name})
    endif()
    if(ARG_SERVICE)
        target_link_libraries(${name} PRIVATE replay_wevtapi)
        add_dependencies(${name} stage)
    endif()
    target_link_libraries(${name} PRIVATE ${ARG_DEPENDS} tavrin_gmock_main)
endfunction()

# tavrin_add_test_program(<name> SOURCES <files> [DEPENDS <libraries>] [SERVICE])
function(tavrin_add_test_program name)
    tavrin_add_program(${name} ${ARGN})
    tavrin_compile_quickly(${name})
    tavrin_reuse_headers(${name} tavrin_test_support)
endfunction()

# tavrin_add_run(<name> <program>)
# Runs a test program with ctest, on a desktop of tools/desktops.sh.
function(tavrin_add_run name program)
    add_test(NAME ${name} COMMAND ${program} --gtest_brief=1 WORKING_DIRECTORY ${TAVRIN_STAGE_DIR})
    set_tests_properties(${name} PROPERTIES TIMEOUT 120)
endfunction()

# tavrin_add_test(<name> SOURCES <files> [DEPENDS <libraries>] [SERVICE])
# Adds a test program that ctest runs as one test.
function(tavrin_add_test name)
    tavrin_add_test_program(${name} ${ARGN})
    tavrin_add_run(${name} ${name})
endfunction()

# tavrin_add_window_program(<name> <files>...)
# Adds a program that starts the staged exe and uses its window.
function(tavrin_add_window_program name)
    tavrin_add_test_program(${name} SOURCES ${ARGN} DEPENDS tavrin_window_harness)
    add_dependencies(${name} stage)
endfunction()

# tavrin_add_window_run(<name> <program>)
# COST makes ctest start the slowest tests first.
function(tavrin_add_window_run name program)
    tavrin_add_run(${name} ${program})
    set_tests_properties(${name} PROPERTIES LABELS window TIMEOUT 300 COST 50)
    if(NOT CMAKE_CROSSCOMPILING)
        set_tests_properties(${name} PROPERTIES RUN_SERIAL TRUE)  # the user has one desktop
    endif()
endfunction()

# tavrin_add_window_test(<name> <files>...)
function(tavrin_add_window_test name)
    tavrin_add_window_program(${name} ${ARGN})
    tavrin_add_window_run(${name} ${name})
endfunction()
