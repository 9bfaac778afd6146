#pragma once

/// \file
/// What programs link against is marked TIMESHARE_EXPORT: the functions, and the classes that have functions elsewhere or
/// virtual ones. All else that the libraries hold is hidden. A host may be built with any setting of visibility.

#define TIMESHARE_EXPORT __attribute__((visibility("default")))
