# Parsing a few large headers takes most of the compile time, so they are precompiled. That can hide a
# missing include, so tools/lint, Visual C++ and releases use no precompiled headers.

option(TAVRIN_PRECOMPILE_HEADERS "Parse large headers once" ON)
if(MSVC OR CMAKE_DISABLE_PRECOMPILE_HEADERS)
    set(TAVRIN_PRECOMPILE_HEADERS OFF)
endif()

# tavrin_precompile_headers(<target> <headers>...)
function(tavrin_precompile_headers target)
    if(TAVRIN_PRECOMPILE_HEADERS)
        target_precompile_headers(${target} PRIVATE ${ARGN})
        tavrin_quiet_precompiled_headers(${target})
    endif()
endfunction()

# tavrin_reuse_headers(<target> <owner>)
# Both targets must have the same compile options.
function(tavrin_reuse_headers target owner)
    if(TAVRIN_PRECOMPILE_HEADERS)
        target_precompile_headers(${target} REUSE_FROM ${owner})
        tavrin_quiet_precompiled_headers(${target})
    endif()
endfunction()

# g++ 12 reports false overruns for copies of short wide strings if <cwchar> is precompiled.
function(tavrin_quiet_precompiled_headers target)
    target_compile_options(${target} PRIVATE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:
        -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread>)
endfunction()
