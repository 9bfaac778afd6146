#pragma once

namespace terminal {

/// Lets the threads of the program share two heaps, however many threads there are. By itself the C library gives each its
/// own: results are made on one thread and freed on another, and what is free in the heap of one thread serves no other,
/// so that the program grew to more than twice what it held. Once, before threads are started.
void shareHeaps();

} // namespace terminal
