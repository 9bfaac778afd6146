#pragma once

#include "host/services/CSingletonT.h"

namespace TC {

/// A service that the host makes and ends by hand. It is installed and reached as every other one.
template <class T> using CManualSingletonT = CSingletonT<T>;

} // namespace TC
