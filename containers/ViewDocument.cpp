#include "containers/ViewDocument.h"

#include "host/records/BSONObj.h"

#include <string>

namespace TC {

namespace {

using bson::BSONElement;
using bson::BSONObj;
using bson::BSONObjBuilder;

constexpr const char *kFormulas = "index";
constexpr const char *kBarFormulas = "slectindex";
constexpr const char *kBarTemplates = "selecttempalte";
constexpr const char *kOverlays = "superposstock";
constexpr const char *kTradeSetting = "linkagedialogsetting";
constexpr const char *kSectorLevel = "swbkzslevel";
constexpr const char *kOverlayFlags = "addstockflags";
constexpr const char *kConvertibles = "addconvertiblecodes";
constexpr const char *kAttached = "mainAttchIndex";

void appendTexts(BSONObjBuilder &document, const char *key, const QVector<QString> &texts) {
    BSONObjBuilder list;
    for (int i = 0; i < texts.size(); ++i) {
        list.append(std::to_string(i), texts[i].toStdString());
    }
    document.appendArray(key, list.obj());
}

QString textOf(const BSONElement &element) {
    return QString::fromStdString(element.getString());
}

/// A list of which every element is a text; throws otherwise.
QVector<QString> texts(const BSONObj &document, const char *key) {
    QVector<QString> result;
    for (const BSONElement &element : document.getArray(key).elements()) {
        result.append(textOf(element));
    }
    return result;
}

/// Name behind value, over and over; a value without a name says nothing.
void readTradeSetting(const BSONObj &document, QVector<QPair<QString, bool>> &setting) {
    bool isName = false;
    bool checked = false;
    for (const BSONElement &element : document.getArray(kTradeSetting).elements()) {
        const QString text = textOf(element);
        if (isName) {
            setting.append({text, checked});
        } else {
            checked = text == QLatin1String("1");
        }
        isName = !isName;
    }
}

/// Unlike every other part it may be of any type, which then counts as absent.
std::optional<QVector<QString>> convertibles(const BSONObj &document) {
    if (!document.hasField(kConvertibles) || !document.getField(kConvertibles).isArray()) {
        return std::nullopt;
    }
    QVector<QString> codes;
    for (const BSONElement &element : document.getArray(kConvertibles).elements()) {
        if (element.isText()) {
            codes.append(textOf(element));
        }
    }
    return codes;
}

/// What stands in front of the panes; throws at the first fault, as the next.
void readBeforePanes(const BSONObj &document, bool concise, ViewDocument &view) {
    if (concise && document.hasField(kBarFormulas)) {
        view.mBarFormulas = texts(document, kBarFormulas);
    }
    if (concise && document.hasField(kBarTemplates)) {
        view.mBarTemplates = texts(document, kBarTemplates);
    }
    if (document.hasField(kOverlays)) {
        view.mOverlays = texts(document, kOverlays);
    }
}

void readBehindPanes(const BSONObj &document, ViewDocument &view) {
    if (document.hasField(kTradeSetting)) {
        readTradeSetting(document, view.mTradeSetting);
    }
    if (document.hasField(kSectorLevel)) {
        view.mSectorLevel = document.getInt(kSectorLevel);
    }
    if (document.hasField(kOverlayFlags)) {
        view.mOverlayFlags = document.getInt(kOverlayFlags);
        view.mConvertibles = convertibles(document); // without the flags they mean nothing
    }
    if (document.hasField(kAttached)) {
        view.mAttached.append(QString::fromStdString(document.getString(kAttached)));
    }
}

} // namespace

QString ViewDocument::toText() const {
    BSONObjBuilder document;
    appendTexts(document, kFormulas, mFormulas.value_or(QVector<QString>()));
    if (mBarFormulas) {
        appendTexts(document, kBarFormulas, *mBarFormulas);
    }
    if (mBarTemplates) {
        appendTexts(document, kBarTemplates, *mBarTemplates);
    }
    if (!mOverlays.isEmpty()) {
        appendTexts(document, kOverlays, mOverlays);
    }
    QVector<QString> setting;
    for (const QPair<QString, bool> &entry : mTradeSetting) {
        setting << QString(entry.second ? QStringLiteral("1") : QStringLiteral("0")) << entry.first;
    }
    appendTexts(document, kTradeSetting, setting);
    if (mSectorLevel) {
        document.append(kSectorLevel, *mSectorLevel);
    }
    if (mOverlayFlags) {
        document.append(kOverlayFlags, *mOverlayFlags);
    }
    if (mConvertibles) {
        appendTexts(document, kConvertibles, *mConvertibles);
    }
    for (const QString &formula : mAttached) {
        document.append(kAttached, formula.toStdString());
    }
    return QString::fromStdString(document.obj().jsonString());
}

std::optional<ViewDocument> ViewDocument::fromText(const QString &text, bool concise) {
    ViewDocument view;
    bool isDocument = false;
    try {
        const BSONObj document = BSONObj::fromJson(text.toStdString());
        const QVector<QString> formulas = texts(document, kFormulas);
        isDocument = true;
        readBeforePanes(document, concise, view);
        view.mFormulas = formulas.mid(0, kMostFormulas);
        view.mFormulasLeftOut = formulas.size() - view.mFormulas->size();
        readBehindPanes(document, view);
    } catch (const bson::BSONError &) {
        // as far as it is sound
    }
    return isDocument ? std::make_optional(view) : std::nullopt;
}

} // namespace TC
