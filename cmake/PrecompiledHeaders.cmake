# Parsing a few large headers is most of the compile time, so they are parsed once. That can hide a
# missing include: tools/lint, Visual C++ and a build without tests compile each file by itself.

set(TAVRIN_PRECOMPILE_HEADERS ON)
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
# The owner is compiled with the same options.
function(tavrin_reuse_headers target owner)
    if(TAVRIN_PRECOMPILE_HEADERS)
        target_precompile_headers(${target} REUSE_FROM ${owner})
        tavrin_quiet_precompiled_headers(${target})
    endif()
endfunction()

# g++ 12 takes the copy of a short wide string for an overrun when <cwchar> is precompiled.
function(tavrin_quiet_precompiled_headers target)
    target_compile_options(${target} PRIVATE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:
        -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread>)
endfunction()
