# GoogleTest, built from Debian's sources with the target's own compiler and
# sanitizers: the same way on both targets.
set(ZK_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "Sources of GoogleTest")
if(NOT EXISTS ${ZK_GOOGLETEST_DIR}/CMakeLists.txt)
    message(FATAL_ERROR "GoogleTest's sources are not in ${ZK_GOOGLETEST_DIR} "
        "(Debian package 'googletest'); install it or set ZK_BUILD_TESTS=OFF")
endif()
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(gtest_disable_pthreads OFF CACHE BOOL "" FORCE)
add_subdirectory(${ZK_GOOGLETEST_DIR} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
