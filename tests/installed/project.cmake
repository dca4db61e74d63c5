cmake_minimum_required(VERSION 3.20)
project(outside LANGUAGES CXX)
# No standard is asked for here: the library's target brings the one that its headers need.
find_package(ZkUtil 8.4 REQUIRED)
add_executable(outside main.cpp)
target_link_libraries(outside PRIVATE zk::util zk::host_texts)
target_compile_definitions(outside PRIVATE ZK_WITH_HOST_TEXTS)
target_compile_options(outside PRIVATE -Wall -Wextra -Wpedantic -Werror)
