// The command line alone as a program, for tests in which another program calls it.
#include "commands/CommandLine.h"

#include <iostream>

int main(int count, char** arguments) {
    return zem::RunCommandLine({arguments + 1, arguments + count}, ZEM_PROGRAM_FOLDER, std::cout, std::cerr)
        .exitStatus;
}
