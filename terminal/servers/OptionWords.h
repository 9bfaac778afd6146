#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace terminal {

/// The options of a program that has few of them, each with a value: --name value or --name=value.
struct OptionWords {
    /// Takes a value; answers what is wrong with it, or an empty text.
    using Take = std::function<QString(const QString &name, const QString &value)>;

    bool wantsHelp = false; ///< --help or -h; what stands behind it is not looked at
    QStringList others; ///< that begin without --, such as files

    /// Goes through the arguments. Answers an empty text or one line that names the option and never its value.
    QString take(const QStringList &arguments, const QStringList &names, const Take &takeOption);
};

} // namespace terminal
