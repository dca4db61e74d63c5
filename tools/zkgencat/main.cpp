// zkgencat: makes message catalogs of message sources, lists and compares them. See tools/zkgencat.1.
#include "tools/zkgencat/run.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv)
{
    try {
        return zkgencat::run(argc, argv, std::cin, std::cout, std::cerr);
    } catch (std::exception const& failure) {  // out of memory, above all
        std::cerr << "zkgencat: " << failure.what() << '\n';
        return zkgencat::failed;
    }
}
