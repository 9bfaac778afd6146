#include "terminal/config/ConfigService.h"

#include "host/services/CLinkageManager.h"
#include "toolkit/files/RegularFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <boost/make_shared.hpp>

#include <cmath>
#include <optional>
#include <utility>

namespace terminal {
namespace {

constexpr qint64 kLargestConfig = 64LL * 1000 * 1000; ///< bytes

class ConfigWords {
    Q_DECLARE_TR_FUNCTIONS(ConfigService)
};

QString tableField(int tableId) {
    return QStringLiteral("table%1").arg(tableId);
}

/// An object with these fields put in; a null value takes its field out. It is made anew, since one in which texts are replaced
/// keeps the former ones in its memory.
QJsonObject merged(const QJsonObject &object, const QJsonObject &fields) {
    QJsonObject both;
    for (auto field = object.begin(); field != object.end(); ++field) {
        if (!fields.contains(field.key())) {
            both.insert(field.key(), field.value());
        }
    }
    for (auto field = fields.begin(); field != fields.end(); ++field) {
        if (!field.value().isNull()) {
            both.insert(field.key(), field.value());
        }
    }
    return both;
}

/// What waited for the disk when a program was killed; it is newer than the file.
std::optional<QJsonObject> waitingFields(const QString &path) {
    GZ::RegularFile waiting(NewestWriter::waitingPath(path));
    const QJsonDocument document = QJsonDocument::fromJson(waiting.whole(kLargestConfig));
    return waiting.isGood() && document.isObject() ? std::optional(document.object()) : std::nullopt;
}

} // namespace

ConfigService::ConfigService(QString path) : mPath(std::move(path)), mWriter(mPath) {
    load();
}

bool ConfigService::hideModel() {
    return flag("hideModel", false);
}

bool ConfigService::isLevel2User(const QString &market) {
    std::lock_guard<std::mutex> hold(mLock);
    return mFields.value(QStringLiteral("level2")).toArray().contains(market);
}

QString ConfigService::value(const QString &name, const QString &fallback) const {
    std::lock_guard<std::mutex> hold(mLock);
    return mFields.value(name).toString(fallback);
}

void ConfigService::setValue(const QString &name, const QString &value) {
    change({{name, value}});
}

QJsonObject ConfigService::section(const QString &name) const {
    std::lock_guard<std::mutex> hold(mLock);
    return mFields.value(name).toObject();
}

void ConfigService::changeSection(const QString &name, const QJsonObject &fields) {
    std::lock_guard<std::mutex> hold(mLock);
    mFields = merged(mFields, {{name, merged(mFields.value(name).toObject(), fields)}});
    writeFile();
}

QMap<QString, double> ConfigService::numbers(const QString &section, const QString &entry) const {
    const QJsonObject fields = this->section(section).value(entry).toObject();
    QMap<QString, double> values;
    for (auto field = fields.begin(); field != fields.end(); ++field) {
        if (field.value().isDouble()) {
            values[field.key()] = field.value().toDouble();
        }
    }
    return values;
}

void ConfigService::setNumbers(const QString &section, const QString &entry,
                               const QMap<QString, double> &values) {
    std::lock_guard<std::mutex> hold(mLock);
    QJsonObject fields;
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (std::isfinite(*value)) {
            fields.insert(value.key(), *value);
        }
    }
    const QJsonObject whole = mFields.value(section).toObject();
    mFields =
        merged(mFields, {{section, merged(whole, {{entry, merged(whole.value(entry).toObject(), fields)}})}});
    writeFile();
}

QStringList ConfigService::messages() const {
    std::lock_guard<std::mutex> hold(mLock);
    for (const QString &reason : mWriter.takeTroubles()) {
        tell(ConfigWords::tr("配置文件 %1 无法写入（%2）").arg(mPath, reason));
    }
    return mMessages;
}

QList<boost::shared_ptr<TC::CAccount>> ConfigService::User::accounts() const {
    QList<boost::shared_ptr<TC::CAccount>> all;
    for (const auto &known : TC::CSingletonT<TC::CLinkageManager>::instance().getAccounts()) {
        const auto account = boost::make_shared<TC::CAccount>();
        account->mKey = known->mAccountId;
        account->mName = known->mAccountName;
        all.append(account);
    }
    return all;
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
    if (const std::optional<QJsonObject> newer = waitingFields(mPath)) {
        mFields = *newer;
        return;
    }
    GZ::RegularFile file(mPath);
    if (file.fault() == GZ::RegularFile::eMissing) {
        return;
    }
    const QByteArray content = file.whole(kLargestConfig);
    if (file.fault() == GZ::RegularFile::eUnreadable) {
        mUnread = true;
        tell(ConfigWords::tr("配置文件 %1 无法读取（%2），使用缺省配置").arg(mPath, file.reason()));
        return;
    }
    if (!file.isGood()) {
        keepDamaged(file.reason()); // the next change would replace it
        return;
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(content, &error);
    if (document.isObject()) {
        mFields = document.object();
        return;
    }
    keepDamaged(error.error == QJsonParseError::NoError ? ConfigWords::tr("内容不是对象")
                                                        : error.errorString());
}

void ConfigService::keepDamaged(const QString &reason) {
    QString aside = mPath + QStringLiteral(".damaged");
    for (int i = 2; QFileInfo::exists(aside); ++i) {
        aside = mPath + QStringLiteral(".damaged%1").arg(i);
    }
    if (QFile::rename(mPath, aside)) {
        mMessages.append(
            ConfigWords::tr("配置文件 %1 已损坏（%2），已另存为 %3，使用缺省配置").arg(mPath, reason, aside));
    } else {
        mMessages.append(ConfigWords::tr("配置文件 %1 已损坏（%2），使用缺省配置").arg(mPath, reason));
    }
}

void ConfigService::change(const QJsonObject &fields) {
    std::lock_guard<std::mutex> hold(mLock);
    mFields = merged(mFields, fields);
    writeFile();
}

/// Reads the file that could not be read before, under what has been changed since; false when it still cannot be.
bool ConfigService::readLate() {
    QJsonObject changes = std::exchange(mFields, {});
    mUnread = false;
    load();
    for (auto field = changes.begin(); field != changes.end(); ++field) {
        if (field.value().isObject()) {
            field.value() = merged(mFields.value(field.key()).toObject(), field.value().toObject());
        }
    }
    mFields = merged(mFields, changes);
    return !mUnread;
}

void ConfigService::writeFile() {
    if (mPath.isEmpty()) {
        return;
    }
    if (mUnread && !readLate()) {
        return;
    }
    mWriter.write(QJsonDocument(mFields).toJson());
}

/// A trouble that lasts is told once.
void ConfigService::tell(const QString &message) const {
    if (!mMessages.contains(message)) {
        mMessages.append(message);
    }
}

QString keptValue(const QString &path, const QString &name) {
    if (const std::optional<QJsonObject> newer = waitingFields(path)) {
        return newer->value(name).toString();
    }
    GZ::RegularFile file(path);
    return QJsonDocument::fromJson(file.whole(kLargestConfig)).object().value(name).toString();
}

} // namespace terminal
