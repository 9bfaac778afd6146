#include "host/toolkit/Wording.h"

#include "host/toolkit/Text.h"

#include <QCoreApplication>

namespace GZ {
namespace {

struct ListWords {
    Q_DECLARE_TR_FUNCTIONS(GZ::Wording)
};

/// What the lines of the main chart are called.
constexpr const char *kMainLines[] = {
    QT_TRANSLATE_NOOP("GZ::MainLines", "价格"),
    QT_TRANSLATE_NOOP("GZ::MainLines", "均价"),
    QT_TRANSLATE_NOOP("GZ::MainLines", "成交量"),
};

} // namespace

QString countText(qint64 count) {
    return formatDoubleNumber(count, 0, utils::eFormatPlain, true, QString());
}

QString namesText(const QStringList &names) {
    return names.join(ListWords::tr("、", "between names"));
}

QString listText(const QStringList &entries) {
    return entries.join(ListWords::tr("，", "between entries"));
}

QString phrasesText(const QStringList &phrases) {
    return phrases.join(ListWords::tr("；", "between phrases"));
}

QString lineText(const QString &name) {
    for (const char *line : kMainLines) {
        if (name == QString::fromUtf8(line)) {
            return QCoreApplication::translate("GZ::MainLines", line);
        }
    }
    return name;
}

} // namespace GZ
