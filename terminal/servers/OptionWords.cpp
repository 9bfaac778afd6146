#include "terminal/servers/OptionWords.h"

namespace terminal {

QString OptionWords::take(const QStringList &arguments, const QStringList &names, const Take &takeOption) {
    for (int i = 0; i < arguments.size(); ++i) {
        const int equals = arguments[i].indexOf(QLatin1Char('='));
        const QString name = arguments[i].left(equals);
        if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
            wantsHelp = true;
            return {};
        }
        if (!name.startsWith(QLatin1String("--"))) {
            others.append(arguments[i]);
            continue;
        }
        if (!names.contains(name)) {
            return QStringLiteral("%1: unknown option: see --help").arg(name);
        }
        if (equals < 0 && i + 1 == arguments.size()) {
            return QStringLiteral("%1: the value is missing: see --help").arg(name);
        }
        const QString value = equals < 0 ? arguments[++i] : arguments[i].mid(equals + 1);
        const QString wrong = takeOption(name, value);
        if (!wrong.isEmpty()) {
            return QStringLiteral("%1: %2").arg(name, wrong);
        }
    }
    return {};
}

} // namespace terminal
