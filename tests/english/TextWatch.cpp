#include "tests/english/TextWatch.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QMetaProperty>
#include <QMutex>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace tests {
namespace {

const QString kFolder = QStringLiteral(":/timeshare/translations");

bool isChinese(const QString &text) {
    static const QRegularExpression pattern(QStringLiteral("[\\x{3400}-\\x{9fff}]"));
    return text.contains(pattern);
}

void addModelTexts(const QAbstractItemModel &model, Qt::Orientation along, QStringList &texts) {
    const int count = along == Qt::Horizontal ? model.columnCount() : model.rowCount();
    for (int i = 0; i < count; ++i) {
        texts.append(QStringLiteral("heading: ") + model.headerData(i, along).toString());
    }
}

void addTextsOf(const QWidget &widget, QStringList &texts) {
    static const QSet<QString> kUnread{QStringLiteral("objectName"), QStringLiteral("styleSheet"),
                                       QStringLiteral("windowFilePath")};
    const QMetaObject &type = *widget.metaObject();
    for (int i = 0; i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        if (property.userType() == QMetaType::QString && !kUnread.contains(QLatin1String(property.name()))) {
            texts.append(QLatin1String(type.className()) + QStringLiteral(": ") +
                         property.read(&widget).toString());
        }
    }
    for (const QAction *action : widget.actions()) {
        texts.append(QStringLiteral("action: ") + action->text());
    }
    if (const auto *box = qobject_cast<const QComboBox *>(&widget)) {
        for (int i = 0; i < box->count(); ++i) {
            texts.append(QStringLiteral("entry: ") + box->itemText(i));
        }
    }
    if (const auto *view = qobject_cast<const QAbstractItemView *>(&widget)) {
        if (view->model() && !qobject_cast<const QHeaderView *>(view)) {
            addModelTexts(*view->model(), Qt::Horizontal, texts);
        }
    }
}

/// Width that the text of a widget takes, beside which its sort needs nothing; 0 when it has none that has to be whole.
int neededWidth(const QWidget &widget) {
    const auto *button = qobject_cast<const QAbstractButton *>(&widget);
    if (button && button->text().isEmpty()) {
        return 0;
    }
    const auto *label = qobject_cast<const QLabel *>(&widget);
    if (label && (label->wordWrap() || label->text().isEmpty())) {
        return 0;
    }
    if (!button && !label && widget.property("text").userType() != QMetaType::QString) {
        return 0;
    }
    if (widget.inherits("QCheckBox") || widget.inherits("QRadioButton")) {
        return widget.sizeHint().width(); // the mark beside the text
    }
    QString text = widget.property("text").toString();
    text.remove(QLatin1Char('&'));
    return widget.fontMetrics().horizontalAdvance(text);
}

/// Width that is left of a button where those it lies in end.
int shownWidth(const QWidget &widget) {
    QRect shown = widget.rect();
    if (qobject_cast<const QAbstractButton *>(&widget)) {
        const QWidget *part = &widget;
        while (!part->isWindow() && part->parentWidget()) {
            part = part->parentWidget();
            shown &= QRect(widget.mapFrom(part, QPoint(0, 0)), part->size());
        }
    }
    return shown.width();
}

} // namespace

struct TextWatch::Found {
    QMutex lock; ///< texts are asked for on every thread
    QSet<QString> missing;
};

TextWatch::TextWatch() : mFound(new Found) {
    if (!mLibrary.load(QStringLiteral("timeshare_en.qm"), kFolder) ||
        !mTerminal.load(QStringLiteral("terminal_en.qm"), kFolder)) {
        mFound->missing.insert(QStringLiteral("the catalogues"));
    }
}

TextWatch::~TextWatch() {
    delete mFound;
}

QString TextWatch::translate(const char *context, const char *source, const char *comment, int count) const {
    const QString text = QString::fromUtf8(source);
    if (isChinese(text) && mLibrary.translate(context, source, comment, count).isEmpty() &&
        mTerminal.translate(context, source, comment, count).isEmpty()) {
        const QMutexLocker hold(&mFound->lock);
        mFound->missing.insert(QString::fromUtf8(context) + QStringLiteral(": ") + text);
    }
    return {};
}

QStringList TextWatch::missing() const {
    const QMutexLocker hold(&mFound->lock);
    return mFound->missing.values();
}

QStringList textsOf(const QWidget &window) {
    QStringList texts;
    addTextsOf(window, texts);
    for (const QWidget *part : window.findChildren<QWidget *>()) {
        addTextsOf(*part, texts);
    }
    return texts;
}

QStringList chineseOf(const QStringList &texts, QStringList names) {
    std::sort(names.begin(), names.end(),
              [](const QString &a, const QString &b) { return a.size() > b.size(); });
    QStringList found;
    for (QString text : texts) {
        for (const QString &name : names) {
            text.remove(name, Qt::CaseInsensitive);
        }
        if (isChinese(text)) {
            found.append(text);
        }
    }
    found.removeDuplicates();
    return found;
}

QStringList clippedOf(const QWidget &window) {
    QStringList found;
    for (const QWidget *part : window.findChildren<QWidget *>()) {
        const int needed = part->isVisible() ? neededWidth(*part) : 0;
        if (needed > shownWidth(*part)) {
            found.append(
                QStringLiteral("%1 \"%2\": %3 pixels, has %4")
                    .arg(QLatin1String(part->metaObject()->className()), part->property("text").toString())
                    .arg(needed)
                    .arg(shownWidth(*part)));
        }
    }
    return found;
}

} // namespace tests
