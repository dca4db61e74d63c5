# zk_cli11: the headers of CLI11, by which the tools read their arguments. They
# lie in the system's own folder of headers, which a cross compiler must not
# search: a link of the build's own leads to them alone.
find_path(ZK_CLI11_FOLDER CLI/CLI.hpp NO_CMAKE_FIND_ROOT_PATH
    DOC "Folder that holds CLI/CLI.hpp")
if(NOT ZK_CLI11_FOLDER)
    message(FATAL_ERROR "CLI11's headers are not here (Debian package 'libcli11-dev'); "
        "install it, name their folder in ZK_CLI11_FOLDER or set ZK_BUILD_TOOLS=OFF")
endif()
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/cli11)
file(CREATE_LINK ${ZK_CLI11_FOLDER}/CLI ${PROJECT_BINARY_DIR}/cli11/CLI SYMBOLIC COPY_ON_ERROR)
add_library(zk_cli11 INTERFACE)
target_include_directories(zk_cli11 SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/cli11)
