# SPDX-License-Identifier: Apache-2.0
# What each compiler is told: warnings are errors for all of them.

if(MSVC)
    set(rpa_warnings /utf-8 /W4 /WX /permissive- /Zc:__cplusplus)
else()
    set(rpa_warnings -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Werror)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        list(APPEND rpa_warnings -Wduplicated-cond -Wlogical-op)
    else()
        list(APPEND rpa_warnings -Wgnu)
        if(CMAKE_UNITY_BUILD) # a local name may be one of another file that is compiled with it
            list(APPEND rpa_warnings -Wno-shadow)
        endif()
    endif()
endif()
target_compile_options(rpa_options INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:${rpa_warnings}>")
