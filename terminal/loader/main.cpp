#include "terminal/loader/PgLoadProgram.h"

int main(int argc, char **argv) {
    return terminal::runLoad(argc, argv);
}
