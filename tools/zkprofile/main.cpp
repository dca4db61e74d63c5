// zkprofile: reads and changes the application's settings from the command line. See tools/zkprofile.1.
#include "tools/zkprofile/run.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv)
{
    try {
        return zkprofile::run(argc, argv, std::cout, std::cerr);
    } catch (std::exception const& failure) {  // out of memory, above all
        std::cerr << "zkprofile: " << failure.what() << '\n';
        return zkprofile::failed;
    }
}
