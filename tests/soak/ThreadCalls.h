#pragma once

#include <QStringList>

#include <pthread.h>

namespace tests {

/// Makes ready for callsOf(), which loads what it needs now: not in a signal handler.
void watchCalls();

/// The functions that another thread of this program is in, the innermost first; none where it does not answer within
/// a second. Those that are not exported are told as file and place, which addr2line names. One caller at a time. A system call of the thread that no signal may break off goes on first.
QStringList callsOf(pthread_t thread);

} // namespace tests
