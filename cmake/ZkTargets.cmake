# The few kinds of target that this project has. Sources are found by folder:
# a new file needs no line in any list.
#
#   zk_module(text)                     # the library's sources in this folder
#   zk_test(text)                       # tests in this folder, against the shared module
#   zk_test(os_internals INTERNAL ...)  # tests that reach into namespace zk
#   zk_bench(text)                      # benchmarks in this folder
#   zk_fuzz(regexp regexpFuzz.cpp)      # one fuzz target
#   zk_tool(zkprofile)                  # a program for users, from this folder's sources

define_property(GLOBAL PROPERTY ZK_MODULES BRIEF_DOCS "Names of all zk_module targets")

# zk_module(<name> [SUBDIRS <folder>...])
# The object files of this folder's sources, and of the named folders below it.
function(zk_module name)
    cmake_parse_arguments(ARG "" "" "SUBDIRS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    foreach(folder IN LISTS ARG_SUBDIRS)
        file(GLOB more CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
        list(APPEND sources ${more})
    endforeach()
    if(NOT sources)
        return()
    endif()
    add_library(zk_${name} OBJECT ${sources})
    target_include_directories(zk_${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_compile_definitions(zk_${name} PRIVATE ZK_UTIL_BUILD)
    target_link_libraries(zk_${name} PUBLIC zk_usage_requirements PRIVATE zk_warnings zk_module_options)
    set_property(GLOBAL APPEND PROPERTY ZK_MODULES zk_${name})
endfunction()

# zk_library(): the shared module zk::util and, for tests of internals, the
# same objects as a static library.
function(zk_library)
    get_property(modules GLOBAL PROPERTY ZK_MODULES)
    set(objects)
    foreach(module IN LISTS modules)
        list(APPEND objects $<TARGET_OBJECTS:${module}>)
    endforeach()

    add_library(zk_util SHARED ${objects})
    add_library(zk::util ALIAS zk_util)
    add_library(zk_util_static STATIC ${objects})
    target_compile_definitions(zk_util_static INTERFACE ZK_UTIL_STATIC)
    foreach(library zk_util zk_util_static)
        target_include_directories(${library} PUBLIC
            $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
            $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/zentrika>)
        target_link_libraries(${library} PUBLIC zk_usage_requirements ${ZK_SYSTEM_LIBRARIES})
    endforeach()
    if(WIN32)
        set_target_properties(zk_util PROPERTIES OUTPUT_NAME ZK_UTIL_DLL PREFIX "")
        target_sources(zk_util PRIVATE ${PROJECT_BINARY_DIR}/module.rc)
        configure_file(${PROJECT_SOURCE_DIR}/platform/os/windows/module.rc.in
                       ${PROJECT_BINARY_DIR}/module.rc @ONLY)
    else()
        set_target_properties(zk_util PROPERTIES
            OUTPUT_NAME ZK_UTIL_DLL
            VERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
            SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
        set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.map)
        target_link_options(zk_util PRIVATE LINKER:-z,now LINKER:--version-script,${exports})
        set_target_properties(zk_util PROPERTIES LINK_DEPENDS ${exports})
        if(NOT ZK_SANITIZE)   # the sanitizers' own symbols are in the program
            target_link_options(zk_util PRIVATE LINKER:--no-undefined)
        endif()
    endif()
endfunction()

# Test code is compiled for a short wait: little is optimised, and GoogleTest's
# headers are compiled once for all programs.
# At -O1 the warnings about bounds see branches that are not there.
set(ZK_TEST_OPTIONS -O1 -g1 -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)

# zk_test(<name> [INTERNAL | APART] [DISPLAY] [SOURCES <file>...] [LABELS <label>...] [LIBRARIES <lib>...] [SUBDIRS <folder>...])
# One GoogleTest program from the *Test.cpp files of this folder. With INTERNAL
# it is linked with the static library, so that it sees namespace zk; such
# files are named *InternalTest.cpp and are left out of the other program. With
# APART it is linked with neither form of the library. With DISPLAY a Windows
# program runs on a display of its own.
function(zk_test name)
    cmake_parse_arguments(ARG "INTERNAL;APART;DISPLAY" "" "SOURCES;LABELS;LIBRARIES;SUBDIRS" ${ARGN})
    set(sources ${ARG_SOURCES})
    if(NOT sources)
        file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*Test.cpp)
        foreach(folder IN LISTS ARG_SUBDIRS)
            file(GLOB more CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*Test.cpp)
            list(APPEND sources ${more})
        endforeach()
        if(ARG_INTERNAL)
            list(FILTER sources INCLUDE REGEX "InternalTest\\.cpp$")
        else()
            list(FILTER sources EXCLUDE REGEX "InternalTest\\.cpp$")
        endif()
    endif()
    if(NOT sources)
        return()
    endif()
    set(target test_${name})
    add_executable(${target} ${sources})
    if(ARG_INTERNAL)
        target_link_libraries(${target} PRIVATE zk_util_static)
        target_compile_definitions(${target} PRIVATE ZK_UTIL_STATIC)
    elseif(NOT ARG_APART)
        target_link_libraries(${target} PRIVATE zk::util)
    endif()
    target_link_libraries(${target} PRIVATE zk_test_support zk_warnings ${ARG_LIBRARIES})
    target_compile_options(${target} PRIVATE ${ZK_TEST_OPTIONS})
    target_precompile_headers(${target} REUSE_FROM zk_test_headers)
    add_test(NAME ${name} COMMAND ${target})
    set(drive)
    if(WIN32)
        set(drive "Z:")   # Wine's name for the root of this machine
    endif()
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "GTEST_OUTPUT=xml:${drive}${PROJECT_BINARY_DIR}/test-results/${name}.xml;GTEST_COLOR=no;ZK_SOURCE_DIR=${drive}${PROJECT_SOURCE_DIR};ZK_BINARY_DIR=${drive}${PROJECT_BINARY_DIR}"
        TIMEOUT 600)
    if(ARG_DISPLAY AND WIN32)
        set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT ZK_WINE_DISPLAY=1)
    endif()
    if(ARG_LABELS)
        set_tests_properties(${name} PROPERTIES LABELS "${ARG_LABELS}")
    endif()
endfunction()

# zk_bench(<name> [PEERS <lib>...] [SUBDIRS <folder>...])
# One Google Benchmark program from the *Bench.cpp files of this folder and of the named folders below it.
function(zk_bench name)
    cmake_parse_arguments(ARG "" "" "PEERS;SUBDIRS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*Bench.cpp)
    foreach(folder IN LISTS ARG_SUBDIRS)
        file(GLOB more CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*Bench.cpp)
        list(APPEND sources ${more})
    endforeach()
    if(NOT sources)
        return()
    endif()
    add_executable(bench_${name} ${sources})
    target_link_libraries(bench_${name} PRIVATE
        zk::util zk_bench_support zk_warnings benchmark::benchmark ${ARG_PEERS})
    set_property(GLOBAL APPEND PROPERTY ZK_BENCHMARKS bench_${name})
endfunction()

# zk_fuzz(<name> <source>): a libFuzzer target over the static library, with
# its seeds in fuzz/corpus/<name>.
function(zk_fuzz name source)
    add_executable(fuzz_${name} ${source})
    target_link_libraries(fuzz_${name} PRIVATE zk_util_static zk_warnings)
    target_compile_definitions(fuzz_${name} PRIVATE ZK_UTIL_STATIC)
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
    set_property(GLOBAL APPEND PROPERTY ZK_FUZZERS fuzz_${name})
endfunction()

# zk_tool(<name>)
# A program from this folder's sources, and those without main.cpp as objects,
# <name>_core, for its tests. The man page stands beside the folder.
function(zk_tool name)
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    add_library(${name}_core OBJECT ${sources})
    target_include_directories(${name}_core PUBLIC ${PROJECT_SOURCE_DIR})
    target_compile_definitions(${name}_core PRIVATE ZK_TOOL_VERSION="${PROJECT_VERSION}")
    target_compile_definitions(${name}_core PRIVATE ZK_UTIL_STATIC)
    target_link_libraries(${name}_core PUBLIC zk_usage_requirements PRIVATE zk_cli11 zk_warnings)

    add_executable(${name} main.cpp)
    target_link_libraries(${name} PRIVATE ${name}_core zk_util_static zk_warnings)
    install(TARGETS ${name} RUNTIME COMPONENT tools)
    if(NOT WIN32)
        install(FILES ../${name}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
    endif()
    set_property(GLOBAL APPEND PROPERTY ZK_TOOLS ${name})
endfunction()
