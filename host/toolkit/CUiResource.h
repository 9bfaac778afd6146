#pragma once

#include "host/Export.h"

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QString>
#include <QStringList>

namespace GZ {

/// Colours, fonts and images of the current theme, by key. An unknown key is reported once on the message
/// handler, as a warning, and gives a visible default: magenta, the default font, a crossed box.
///
/// Reading is safe on any thread; the theme is changed on the user-interface thread.
class TIMESHARE_EXPORT CUiResource {
public:
    static CUiResource &instance();

    QColor getColor(const QString &key) const;
    QFont getFont(const QString &key) const;
    QPixmap getPixmap(const QString &key) const;
    /// Whether the current theme has the key, of any kind.
    bool contains(const QString &key) const;

    /// Names of the built-in themes, the default one first: "dark", "light".
    QStringList themes() const;
    QString theme() const;
    /// Switches to a built-in theme or to a theme file, and tells every CUiResourceChangeHandler. On failure
    /// nothing changes, and the reason goes to `error`.
    bool setTheme(const QString &nameOrPath, QString *error = nullptr);
    /// Grows with every change of the theme; whoever keeps colours compares it. Any thread.
    int generation() const;

private:
    CUiResource();
    ~CUiResource();
    struct Private;
    Private *mPrivate;
};

/// Hears of a changed theme, on the user-interface thread.
class TIMESHARE_EXPORT CUiResourceChangeHandler {
public:
    CUiResourceChangeHandler();
    virtual ~CUiResourceChangeHandler();
    CUiResourceChangeHandler(const CUiResourceChangeHandler &) = delete;
    CUiResourceChangeHandler &operator=(const CUiResourceChangeHandler &) = delete;
    virtual void onUiResourceChanged() = 0;
};

} // namespace GZ
