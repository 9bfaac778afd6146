#include "terminal/feeder/FeedProgram.h"

int main(int argc, char **argv) {
    return terminal::runFeed(argc, argv);
}
