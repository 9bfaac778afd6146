#pragma once

namespace terminal {

/// Keeps what is free and not given back to the system small, over hours of work. Once, before threads are started.
///
/// The threads of the program share two heaps, however many threads there are: by itself the C library gives each its own, and
/// since results are made on one thread and freed on another, what is free in the heap of one serves no other. Large blocks
/// stand outside the heaps and go back when they are freed, whatever their number: by itself the library lets their limit grow to
/// 32 MB with the first of them that is freed, and small blocks that come to lie behind them keep them from going back.
void keepHeapsSmall();

/// Gives whole pages that are free inside the heaps back to the system. Some milliseconds for each 10 MB of them, while which other
/// threads wait that allocate.
void giveBackFreeMemory();

} // namespace terminal
