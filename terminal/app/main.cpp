#include "terminal/app/Program.h"

int main(int argc, char **argv) {
    return terminal::runTerminal(argc, argv);
}
