#pragma once

#include <QString>

namespace terminal {

/// How the way to a server is.
enum class LineState {
    Connecting, ///< no server yet, or none any more; it is tried again
    Connected,
    Refused, ///< the server does not take the credentials; it is tried again
};

/// Why a server was not reached.
struct LineFailure {
    LineState state = LineState::Connecting;
    QString reason; ///< in the library's words, without any secret
};

} // namespace terminal
