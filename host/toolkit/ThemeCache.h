#pragma once

#include "host/toolkit/CUiResource.h"

namespace GZ {

/// What a class takes from the theme, made once a theme. `Look` is a type that can be assigned and has
/// `static Look ofTheme()`, which makes it from the current theme.
///
/// Invariant: what is read was made from the theme that is the current one at the reading. Of one thread.
template <class Look> class ThemeCache {
public:
    /// The look of the current theme, made anew when the theme has changed since the last call. It may be changed, and
    /// keeps that until the next change of the theme.
    Look &look() {
        // Read first: when the theme changes meanwhile, the next call makes it anew.
        const int current = CUiResource::instance().generation();
        if (mGeneration != current) {
            mLook = Look::ofTheme();
            mGeneration = current;
        }
        return mLook;
    }
    Look *operator->() { return &look(); }

    /// Whether the theme has changed since the last call of look().
    bool isStale() const { return mGeneration != CUiResource::instance().generation(); }
    /// Generation of the theme that the look is of; -1 before the first call of look().
    int generation() const { return mGeneration; }

private:
    Look mLook{};
    int mGeneration = -1;
};

} // namespace GZ
