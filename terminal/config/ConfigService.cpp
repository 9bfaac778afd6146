#include "terminal/config/ConfigService.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>

#include <utility>

namespace terminal {
namespace {

QString tr(const char *text) {
    return QCoreApplication::translate("ConfigService", text);
}

QString tableField(int tableId) {
    return QStringLiteral("table%1").arg(tableId);
}

} // namespace

ConfigService::ConfigService(QString path) : mPath(std::move(path)) {
    load();
}

bool ConfigService::hideModel() {
    return flag("hideModel", false);
}

QString ConfigService::value(const QString &name, const QString &fallback) const {
    std::lock_guard<std::mutex> hold(mLock);
    return mFields.value(name).toString(fallback);
}

void ConfigService::setValue(const QString &name, const QString &value) {
    change({{name, value}});
}

QStringList ConfigService::messages() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mMessages;
}

QString ConfigService::User::tableConfig(int tableId) const {
    return mService.value(tableField(tableId));
}

void ConfigService::User::setTableConfig(int tableId, const QString &text) {
    mService.setValue(tableField(tableId), text);
}

TC::UserConfigRecord ConfigService::read() const {
    const TC::UserConfigRecord defaults;
    TC::UserConfigRecord record;
    record.mOverlaySector = flag("overlaySector", defaults.mOverlaySector);
    record.mShowGradient = flag("showGradient", defaults.mShowGradient != 0) ? 1 : 0;
    record.mShowVwap = flag("showVwap", defaults.mShowVwap);
    record.mFilterStock = number("filterStock", defaults.mFilterStock);
    return record;
}

void ConfigService::write(const TC::UserConfigRecord &record) {
    change({{"overlaySector", record.mOverlaySector},
            {"showGradient", record.mShowGradient != 0},
            {"showVwap", record.mShowVwap},
            {"filterStock", record.mFilterStock}});
}

bool ConfigService::flag(const char *name, bool fallback) const {
    std::lock_guard<std::mutex> hold(mLock);
    return mFields.value(QLatin1String(name)).toBool(fallback);
}

int ConfigService::number(const char *name, int fallback) const {
    std::lock_guard<std::mutex> hold(mLock);
    return mFields.value(QLatin1String(name)).toInt(fallback);
}

void ConfigService::load() {
    QFile file(mPath);
    if (mPath.isEmpty() || !file.exists()) {
        return;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        mMessages.append(tr("配置文件 %1 无法读取（%2），使用缺省配置").arg(mPath, file.errorString()));
        return;
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    file.close();
    if (document.isObject()) {
        mFields = document.object();
        return;
    }
    keepDamaged(error.error == QJsonParseError::NoError ? tr("内容不是对象") : error.errorString());
}

void ConfigService::keepDamaged(const QString &reason) {
    QString aside = mPath + QStringLiteral(".damaged");
    for (int i = 2; QFileInfo::exists(aside); ++i) {
        aside = mPath + QStringLiteral(".damaged%1").arg(i);
    }
    if (QFile::rename(mPath, aside)) {
        mMessages.append(tr("配置文件 %1 已损坏（%2），已另存为 %3，使用缺省配置").arg(mPath, reason, aside));
    } else {
        mMessages.append(tr("配置文件 %1 已损坏（%2），使用缺省配置").arg(mPath, reason));
    }
}

void ConfigService::change(const QJsonObject &fields) {
    std::lock_guard<std::mutex> hold(mLock);
    for (auto field = fields.begin(); field != fields.end(); ++field) {
        mFields.insert(field.key(), field.value());
    }
    if (mPath.isEmpty()) {
        return;
    }
    QDir().mkpath(QFileInfo(mPath).path());
    QSaveFile file(mPath);
    const QByteArray text = QJsonDocument(mFields).toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        mMessages.append(tr("配置文件 %1 无法写入（%2）").arg(mPath, file.errorString()));
    }
}

} // namespace terminal
