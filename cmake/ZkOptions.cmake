# Compiler settings that every target of this project shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "" FORCE)
endif()

find_program(ZK_CCACHE ccache)
if(ZK_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # Precompiled headers are cached only if ccache may look past macros and times.
    set(CMAKE_C_COMPILER_LAUNCHER ${ZK_CCACHE})
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${ZK_CCACHE})
endif()

# What users of the library must compile with: C++17, and unwind tables at
# every access, since faults in their frames are thrown as exceptions. Only GCC
# has such tables. Measuring coverage, each access would count as a branch.
add_library(zk_usage_requirements INTERFACE)
target_compile_features(zk_usage_requirements INTERFACE cxx_std_17)
set(non_call_exceptions $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fnon-call-exceptions>)
if(ZK_COVERAGE)
    set(non_call_exceptions $<INSTALL_INTERFACE:${non_call_exceptions}>)
endif()
target_compile_options(zk_usage_requirements INTERFACE ${non_call_exceptions})

# How the library itself is compiled. Calls among its own functions are direct:
# nobody puts others in their place. No symbol is unique in the process: one
# that is would keep the module loaded for ever.
add_library(zk_module_options INTERFACE)
target_compile_options(zk_module_options INTERFACE
    $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-semantic-interposition;-fno-gnu-unique>
    $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-fno-semantic-interposition>)

add_library(zk_warnings INTERFACE)
target_compile_options(zk_warnings INTERFACE -Wall -Wextra -Wpedantic)
if(ZK_WERROR)
    target_compile_options(zk_warnings INTERFACE -Werror)
endif()

if(ZK_SANITIZE)
    add_compile_options(-fsanitize=${ZK_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${ZK_SANITIZE})
    if(ZK_SANITIZE MATCHES undefined)
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()
if(ZK_COVERAGE)
    add_compile_options(--coverage -fprofile-update=atomic)
    add_link_options(--coverage)
endif()

# One folder for all programs and, on Windows, the modules that they load.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
