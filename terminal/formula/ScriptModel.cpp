#include "terminal/formula/ScriptModel.h"

#include "terminal/formula/ScriptModelWords.h"
#include "terminal/market/MarketDate.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStandardPaths>

#include <cmath>
#include <csignal>
#include <cstring>

namespace terminal {
namespace {

QJsonObject barsObject(const MinuteBars &bars) {
    const auto column = [&bars](auto value) {
        QJsonArray values;
        for (const MinuteBar &bar : bars) {
            values.append(value(bar));
        }
        return values;
    };
    return {{QStringLiteral("time"), column([](const MinuteBar &bar) { return double(bar.time); })},
            {QStringLiteral("open"), column([](const MinuteBar &bar) { return bar.open; })},
            {QStringLiteral("high"), column([](const MinuteBar &bar) { return bar.high; })},
            {QStringLiteral("low"), column([](const MinuteBar &bar) { return bar.low; })},
            {QStringLiteral("price"), column([](const MinuteBar &bar) { return bar.price; })},
            {QStringLiteral("average"), column([](const MinuteBar &bar) { return bar.average; })},
            {QStringLiteral("volume"), column([](const MinuteBar &bar) { return bar.volume; })},
            {QStringLiteral("amount"), column([](const MinuteBar &bar) { return bar.amount; })}};
}

/// The interpreter's path, or an empty text when there is none.
QString findInterpreter(const QString &name) {
    if (name.isEmpty()) {
        return defaultPython();
    }
    return name.contains(QLatin1Char('/')) ? name : QStandardPaths::findExecutable(name);
}

QString megabytes(qint64 bytes) {
    return QString::number(bytes >> 20);
}

/// Why a run gave no series, in words; empty when it ended well.
QString endText(const ScriptModelExit &exit, const ScriptModelCommand &command, const ScriptModelLimits &limits,
                const ScriptModelReader &reader) {
    switch (exit.way) {
    case ScriptModelExit::NotStarted:
        return ScriptModelWords::tr("不能运行 %1：%2。请检查 Python 解释器的设置")
            .arg(command.interpreter, QString::fromLocal8Bit(std::strerror(exit.status)));
    case ScriptModelExit::TimedOut:
        return ScriptModelWords::tr("运行超过了 %1 秒，已停止").arg(limits.milliseconds / 1000.0);
    case ScriptModelExit::TooMuchOutput:
        return ScriptModelWords::tr("输出超过了 %1 MB，已停止").arg(megabytes(limits.outputBytes));
    case ScriptModelExit::TooManyProcesses:
        return ScriptModelWords::tr("同时运行的进程超过了 %1 个，已停止").arg(limits.processes);
    case ScriptModelExit::TooMuchMemory:
        return ScriptModelWords::tr("所有进程占用的内存超过了 %1 MB，已停止")
            .arg(megabytes(limits.memoryBytes));
    case ScriptModelExit::Refused:
        return reader.failure()->text;
    case ScriptModelExit::Killed:
        return exit.status == SIGXCPU ? ScriptModelWords::tr("占用处理器的时间太长，已停止")
                                      : ScriptModelWords::tr("被信号 %1 终止").arg(exit.status);
    case ScriptModelExit::Finished:
        break;
    case ScriptModelExit::Stopped:
        return {};
    }
    if (reader.failure()) {
        return reader.failure()->text;
    }
    if (exit.status != 0) {
        const FormulaError told = readPythonError(exit.errors, QFileInfo(command.file).fileName());
        return told.text.isEmpty() ? ScriptModelWords::tr("以状态 %1 结束").arg(exit.status) : told.text;
    }
    return reader.lines().empty() ? ScriptModelWords::tr("没有输出任何线") : QString();
}

ScriptModelOutcome failed(const QString &file, const QString &text, int line = 0) {
    ScriptModelOutcome outcome;
    outcome.error = FormulaError{scriptModelName(file), line, text};
    return outcome;
}

std::vector<se::TimePosition> timesOf(const MinuteBars &bars) {
    std::vector<se::TimePosition> times;
    times.reserve(bars.size());
    for (const MinuteBar &bar : bars) {
        times.emplace_back(bar.time, 0);
    }
    return times;
}

} // namespace

QString scriptModelPath(const QString &formulaName) {
    QString path = formulaName;
    return path.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

QString scriptModelName(const QString &file) {
    return QFileInfo(file).completeBaseName();
}

QStringList scriptModelGroup(const QMap<QString, QString> &arguments) {
    static const QRegularExpression between(QStringLiteral("[,;，；\\s]+"));
    return arguments.value(QStringLiteral("group")).split(between, Qt::SkipEmptyParts);
}

QByteArray scriptModelInput(const ScriptModelInput &input) {
    QJsonObject arguments;
    for (auto argument = input.arguments.begin(); argument != input.arguments.end(); ++argument) {
        arguments.insert(argument.key(), *argument);
    }
    QJsonArray group;
    for (const ScriptModelMember &member : input.group) {
        group.append(QJsonObject{{QStringLiteral("instrument"), member.key},
                                 {QStringLiteral("bars"), barsObject(member.bars)}});
    }
    const QJsonObject object{{QStringLiteral("instrument"), input.key},
                             {QStringLiteral("day"), dateOf(input.day).toString(Qt::ISODate)},
                             {QStringLiteral("arguments"), arguments},
                             {QStringLiteral("bars"), barsObject(input.bars)},
                             {QStringLiteral("group"), group}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

ScriptModelOutcome runScriptModel(ScriptModelProcess &process, const ScriptModelInput &input,
                                  const ScriptModelSettings &settings,
                                  const std::function<void(const ScriptModelProgress &)> &onProgress) {
    const QFileInfo file(input.file);
    if (!file.isFile() || !file.isReadable()) {
        return failed(input.file, ScriptModelWords::tr("没有模型文件 %1").arg(input.file));
    }
    const QString interpreter = findInterpreter(settings.interpreter);
    if (interpreter.isEmpty()) {
        return failed(
            input.file,
            ScriptModelWords::tr("没有找到 Python 解释器%1。请安装 python3 或改正设置")
                .arg(settings.interpreter.isEmpty() ? QString() : QLatin1Char(' ') + settings.interpreter));
    }
    const ScriptModelCommand command{interpreter, file.absoluteFilePath(), scriptModelInput(input)};
    ScriptModelReader reader(static_cast<int>(input.bars.size()));
    ScriptModelProgress told;
    const ScriptModelExit exit = process.run(command, settings.limits, [&](const QByteArray &piece) {
        const bool goesOn = reader.take(piece);
        const ScriptModelProgress &now = reader.progress();
        if (onProgress && (now.done != told.done || now.total != told.total || now.text != told.text)) {
            told = now;
            onProgress(now);
        }
        return goesOn;
    });
    ScriptModelOutcome outcome;
    outcome.stopped = exit.way == ScriptModelExit::Stopped;
    if (outcome.stopped) {
        return outcome;
    }
    if (exit.way == ScriptModelExit::Finished) {
        reader.finish();
    }
    const QString text = endText(exit, command, settings.limits, reader);
    if (!text.isEmpty()) {
        const bool isTold = exit.way == ScriptModelExit::Finished && !reader.failure() && exit.status != 0;
        return failed(input.file, text, isTold ? readPythonError(exit.errors, file.fileName()).line : 0);
    }
    outcome.meta = reader.meta();
    outcome.result = reader.result(timesOf(input.bars));
    return outcome;
}

} // namespace terminal
