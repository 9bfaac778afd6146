#pragma once

/// \file
/// How a script model's supervisor is called:
///
///     timeshare-supervisor MEMORY SECONDS PROCESSES FILES FILESIZE PROGRAM ARGUMENT...
///
/// with memory and file size in bytes and the time of a processor in seconds. The program's standard streams are its
/// own, and it has two more descriptors. It ends with the program's status, or by the program's signal.

namespace terminal {

/// The supervisor writes an int when the program has started, 0 or the error number, and another one before its end,
/// an ESupervisorEnd.
constexpr int kReportDescriptor = 3;
/// Becomes readable, by being closed at the other end, when the whole tree of processes has to end.
constexpr int kLifelineDescriptor = 4;

enum ESupervisorEnd : int { eEndOfProgram, eEndTooManyProcesses, eEndTooMuchMemory };

} // namespace terminal
