#include "cli/CommandLine.h"

int main(int argc, char** argv) {
    return quillo::cli::runCommandLine(argc, argv);
}
