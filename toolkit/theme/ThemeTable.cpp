#include "toolkit/theme/ThemeTable.h"

#include "host/toolkit/QtCompat.h"
#include "toolkit/theme/ThemePicture.h"
#include "toolkit/theme/ThemeWords.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace GZ {
namespace {

/// A section of a theme file; one that is left out is empty.
bool section(const QJsonObject &theme, const QString &name, QJsonObject &entries, QString *error) {
    const QJsonValue value = theme.value(name);
    if (!value.isUndefined() && !value.isObject()) {
        *error = ThemeWords::tr("“%1”应为一个对象").arg(name);
        return false;
    }
    entries = value.toObject();
    return true;
}

} // namespace

QFont ThemeFont::font() const {
    QFont font(mFamilies.value(0));
    font.setFamilies(mFamilies);
    font.setPixelSize(mPixelSize);
    GZ::setFontWeight(font, mWeight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

bool ThemeTable::read(const QByteArray &json, QString *error) {
    QJsonParseError parsed;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parsed);
    if (parsed.error != QJsonParseError::NoError) {
        *error =
            ThemeWords::tr("不是有效的JSON（第%1个字节处：%2）").arg(parsed.offset).arg(parsed.errorString());
        return false;
    }
    if (!document.isObject()) {
        *error = ThemeWords::tr("最外层应为一个对象");
        return false;
    }
    const QJsonObject theme = document.object();
    QJsonObject colors;
    QJsonObject fonts;
    QJsonObject images;
    return section(theme, QStringLiteral("colors"), colors, error) &&
           section(theme, QStringLiteral("fonts"), fonts, error) &&
           section(theme, QStringLiteral("images"), images, error) && readColors(colors, error) &&
           readFonts(fonts, error) && readImages(images, error);
}

bool ThemeTable::readColors(const QJsonObject &colors, QString *error) {
    for (auto entry = colors.begin(); entry != colors.end(); ++entry) {
        if (!readThemeColor(entry.value().toString(), mColors[entry.key()])) {
            *error = ThemeWords::tr("颜色“%1”应写作“#rrggbb”或“#aarrggbb”").arg(entry.key());
            return false;
        }
    }
    return true;
}

bool ThemeTable::readFonts(const QJsonObject &fonts, QString *error) {
    for (auto entry = fonts.begin(); entry != fonts.end(); ++entry) {
        const QJsonObject description = entry.value().toObject();
        ThemeFont font;
        for (const QJsonValue &family : description.value(QStringLiteral("families")).toArray()) {
            font.mFamilies.append(family.toString());
        }
        font.mPixelSize = description.value(QStringLiteral("pixelSize")).toInt();
        font.mWeight = description.value(QStringLiteral("weight")).toInt(ThemeFont::kOrdinaryWeight);
        const bool sized = font.mPixelSize >= 1 && font.mPixelSize <= 200;
        const bool weighted = font.mWeight >= 1 && font.mWeight <= 99;
        if (font.mFamilies.isEmpty() || font.mFamilies.contains(QString()) || !sized || !weighted) {
            *error = ThemeWords::tr(
                         "字体“%1”需要“families”（字体名列表）、“pixelSize”（1到200）和可选的“weight”（1到99）")
                         .arg(entry.key());
            return false;
        }
        mFonts.insert(entry.key(), font);
    }
    return true;
}

bool ThemeTable::readImages(const QJsonObject &images, QString *error) {
    for (auto entry = images.begin(); entry != images.end(); ++entry) {
        const QJsonObject description = entry.value().toObject();
        QString reason;
        ThemeImage image;
        image.mNormal = ThemePicture::render(description, 1, &reason);
        image.mDouble = ThemePicture::render(description, 2, &reason);
        if (image.mNormal.isNull() || image.mDouble.isNull()) {
            *error = ThemeWords::tr("图像“%1”：%2").arg(entry.key(), reason);
            return false;
        }
        mImages.insert(entry.key(), image);
    }
    return true;
}

} // namespace GZ
