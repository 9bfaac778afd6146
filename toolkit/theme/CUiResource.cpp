#include "host/toolkit/CUiResource.h"

#include "host/toolkit/Wording.h"
#include "toolkit/files/RegularFile.h"
#include "toolkit/theme/ThemeTable.h"
#include "toolkit/theme/ThemeWords.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QSet>

#include <atomic>
#include <list>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

/// An archive leaves out what nobody names. Outside all namespaces, as it must be.
static void loadThemeResource() {
    Q_INIT_RESOURCE(themes);
}

namespace GZ {
namespace {

constexpr qint64 kLargestTheme = 64LL * 1000 * 1000; ///< bytes

using Table = std::shared_ptr<const ThemeTable>;

/// The default one first.
QStringList builtInThemes() {
    return {QStringLiteral("dark"), QStringLiteral("light")};
}

QString builtInPath(const QString &name) {
    return QStringLiteral(":/timeshare/theme/%1.json").arg(name);
}

/// Takes a theme file in on top of what the table has.
bool readFile(const QString &path, ThemeTable &table, QString *error) {
    RegularFile file(path);
    const QByteArray content = file.whole(kLargestTheme);
    if (!file.isGood()) {
        *error = ThemeWords::tr("打不开主题文件“%1”：%2").arg(path, file.reason());
        return false;
    }
    QString reason;
    if (!table.read(content, &reason)) {
        *error = ThemeWords::tr("主题文件“%1”：%2").arg(path, reason);
        return false;
    }
    return true;
}

/// What stands for an image that is not there.
QPixmap crossedBox() {
    QImage box(16, 16, QImage::Format_ARGB32_Premultiplied);
    box.fill(Qt::white);
    QPainter painter(&box);
    painter.setPen(Qt::magenta);
    painter.drawRect(0, 0, 15, 15);
    painter.drawLine(0, 0, 15, 15);
    painter.drawLine(0, 15, 15, 0);
    painter.end();
    return QPixmap::fromImage(box);
}

/// Who hears of a changed theme. Lives as long as the process, since a static widget may leave at the very end.
struct Handlers {
    using List = std::list<CUiResourceChangeHandler *>;

    std::mutex mLock;
    List mList; ///< as they came, which is the order in which they hear
    std::unordered_map<CUiResourceChangeHandler *, List::iterator> mPlaces;
};

Handlers &handlers() {
    static auto *list = new Handlers;
    return *list;
}

void tellHandlers() {
    std::vector<CUiResourceChangeHandler *> list;
    {
        std::lock_guard<std::mutex> hold(handlers().mLock);
        list.assign(handlers().mList.begin(), handlers().mList.end());
    }
    for (CUiResourceChangeHandler *handler : list) {
        bool present = false; // an earlier one may have destroyed it
        {
            std::lock_guard<std::mutex> hold(handlers().mLock);
            present = handlers().mPlaces.count(handler) > 0;
        }
        if (present) {
            handler->onUiResourceChanged();
        }
    }
}

} // namespace

struct CUiResource::Private {
    Table table() const {
        std::lock_guard<std::mutex> hold(mLock);
        return mTable;
    }
    /// Reads a theme and makes it the current one.
    bool load(const QString &nameOrPath, QString *error);
    void reportUnknown(const QString &key) {
        {
            std::lock_guard<std::mutex> hold(mLock);
            if (mReported.contains(key)) {
                return;
            }
            mReported.insert(key);
        }
        qWarning("theme: unknown key \"%s\"", qUtf8Printable(key));
    }

    mutable std::mutex mLock; ///< guards what follows, not what the table holds
    Table mTable;
    QString mName;
    QSet<QString> mReported;
    std::atomic<int> mGeneration{0};
};

bool CUiResource::Private::load(const QString &nameOrPath, QString *error) {
    const QString base = builtInThemes().first();
    const bool builtIn = builtInThemes().contains(nameOrPath);
    if (!builtIn && !QFile::exists(nameOrPath)) {
        *error = ThemeWords::tr("没有名为“%1”的主题，也没有这个文件。内置主题：%2")
                     .arg(nameOrPath, GZ::namesText(builtInThemes()));
        return false;
    }
    // What a theme leaves out is that of the default one.
    auto table = std::make_shared<ThemeTable>();
    if (!readFile(builtInPath(base), *table, error)) {
        return false;
    }
    if (nameOrPath != base && !readFile(builtIn ? builtInPath(nameOrPath) : nameOrPath, *table, error)) {
        return false;
    }
    std::lock_guard<std::mutex> hold(mLock);
    mTable = std::move(table);
    mName = nameOrPath;
    ++mGeneration;
    return true;
}

CUiResource::CUiResource() : mPrivate(new Private) {
    loadThemeResource();
    mPrivate->mTable = std::make_shared<const ThemeTable>();
    QString error;
    if (!mPrivate->load(builtInThemes().first(), &error)) {
        qWarning("%s", qUtf8Printable(error));
    }
}

CUiResource::~CUiResource() {
    delete mPrivate;
}

CUiResource &CUiResource::instance() {
    // Lives as long as the process: a service thread may draw until the very end.
    static auto *resource = new CUiResource;
    return *resource;
}

QColor CUiResource::getColor(const QString &key) const {
    const Table table = mPrivate->table();
    const auto found = table->mColors.constFind(key);
    if (found == table->mColors.constEnd()) {
        mPrivate->reportUnknown(key);
        return QColor(255, 0, 255);
    }
    return *found;
}

QFont CUiResource::getFont(const QString &key) const {
    const Table table = mPrivate->table();
    const auto found = table->mFonts.constFind(key);
    if (found == table->mFonts.constEnd()) {
        mPrivate->reportUnknown(key);
        return QFont();
    }
    return found->font();
}

QPixmap CUiResource::getPixmap(const QString &key) const {
    const Table table = mPrivate->table();
    const auto found = table->mImages.constFind(key);
    if (found == table->mImages.constEnd()) {
        mPrivate->reportUnknown(key);
        return crossedBox();
    }
    return QPixmap::fromImage(qGuiApp && qGuiApp->devicePixelRatio() > 1.0 ? found->mDouble : found->mNormal);
}

bool CUiResource::contains(const QString &key) const {
    const Table table = mPrivate->table();
    return table->mColors.contains(key) || table->mFonts.contains(key) || table->mImages.contains(key);
}

QStringList CUiResource::themes() const {
    return builtInThemes();
}

QString CUiResource::theme() const {
    std::lock_guard<std::mutex> hold(mPrivate->mLock);
    return mPrivate->mName;
}

bool CUiResource::setTheme(const QString &nameOrPath, QString *error) {
    QString reason;
    if (!mPrivate->load(nameOrPath, &reason)) {
        if (error) {
            *error = reason;
        }
        return false;
    }
    tellHandlers();
    return true;
}

int CUiResource::generation() const {
    return mPrivate->mGeneration;
}

CUiResourceChangeHandler::CUiResourceChangeHandler() {
    std::lock_guard<std::mutex> hold(handlers().mLock);
    Handlers &all = handlers();
    all.mPlaces.emplace(this, all.mList.insert(all.mList.end(), this));
}

CUiResourceChangeHandler::~CUiResourceChangeHandler() {
    std::lock_guard<std::mutex> hold(handlers().mLock);
    Handlers &all = handlers();
    const auto place = all.mPlaces.find(this);
    all.mList.erase(place->second);
    all.mPlaces.erase(place);
}

} // namespace GZ
