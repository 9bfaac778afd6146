#pragma once

#include <QByteArray>
#include <QColor>
#include <QFont>
#include <QHash>
#include <QImage>
#include <QString>
#include <QStringList>

namespace GZ {

/// What a theme says of a font. A QFont is made of it anew at each reading, since copies of one share what they
/// load and are not for several threads.
struct ThemeFont {
    QStringList mFamilies; ///< the first that the machine has
    int mPixelSize = 12;
    static constexpr int kOrdinaryWeight = 50;
    int mWeight = kOrdinaryWeight; ///< 1 to 99, 75 is bold

    QFont font() const;
};

/// A picture at one and at two device pixels per pixel.
struct ThemeImage {
    QImage mNormal;
    QImage mDouble;
};

/// Everything that a theme says, by key. Immutable once read, and then shared by all threads.
struct ThemeTable {
    QHash<QString, QColor> mColors;
    QHash<QString, ThemeFont> mFonts;
    QHash<QString, ThemeImage> mImages;

    /// Takes in a theme file: an object with the objects "colors" (of "#rrggbb" or "#aarrggbb"), "fonts" (of
    /// objects with "families", "pixelSize" and "weight", 1 to 99) and "images" (see ThemePicture), each of
    /// which may be left out. On failure answers false and says why; what was taken in until then is void.
    bool read(const QByteArray &json, QString *error);

private:
    bool readColors(const class QJsonObject &colors, QString *error);
    bool readFonts(const class QJsonObject &fonts, QString *error);
    bool readImages(const class QJsonObject &images, QString *error);
};

} // namespace GZ
