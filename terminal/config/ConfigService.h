#pragma once

#include "host/services/CConfigService.h"
#include "terminal/config/NewestWriter.h"

#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>

#include <mutex>

namespace terminal {

/// The terminal's configuration: defaults, and over them what a JSON file says.
///
/// A change holds at once and survives the end of the program, however that comes: until a thread of its own has brought it
/// to the disk (NewestWriter) it stands in a file beside, which is read before this one. When the machine stops before
/// waitUntilWritten() has returned, the file may be that of a moment ago; it is the old one or the new one in any case.
///
/// A file that is damaged or cannot be read is kept beside the new one as "<file>.damaged" (with a number when there is
/// one already) and told in messages(). One that the system does not open, as when the program has too many files open,
/// stays as it is: it is read before the first change is written, which goes over it, and until then nothing is
/// written. Values of the wrong kind stand at their defaults. Fields that this version does not know are kept. Every
/// operation may be called from any thread.
class ConfigService : public TC::CConfigService, private TC::UserConfigInterface {
public:
    /// Reads the file; without a path nothing is read or written.
    explicit ConfigService(QString path = {});

    TC::CConfig *config() override { return &mProgram; }
    TC::CUserConfig *userConfig() override { return &mUser; }
    bool isClientType(TC::EClientType type) override { return type == TC::EClientType::Standard; }
    TC::UserConfigInterface &indexUserConfig() override { return *this; }
    bool hideModel() override;
    bool isBrokerQuoteMode() override { return false; }
    /// Markets are listed in the field "level2".
    bool isLevel2User(const QString &market) override;

    /// A value of the terminal's own, as the theme chosen last; `fallback` when there is none.
    QString value(const QString &name, const QString &fallback = {}) const;
    void setValue(const QString &name, const QString &value);

    /// The fields of a part of the file, such as "formulas"; empty when there is none.
    QJsonObject section(const QString &name) const;
    /// Replaces these fields of a part and keeps its others; a null value removes its field.
    void changeSection(const QString &name, const QJsonObject &fields);
    /// Named numbers of an entry of a part, such as the parameters of a formula; what is no number is passed over.
    QMap<QString, double> numbers(const QString &section, const QString &entry) const;
    /// Replaces these numbers of an entry and keeps its others. Those that are not finite are left out.
    void setNumbers(const QString &section, const QString &entry, const QMap<QString, double> &values);

    /// Returns when all changes so far are on the disk, or have been told as failed; false for the latter.
    bool waitUntilWritten() { return mWriter.waitUntilWritten(); }
    /// What went wrong with the file so far, in words for the user.
    QStringList messages() const;

private:
    /// The program's part, read from the file's fields.
    class Program : public TC::CConfig {
    public:
        explicit Program(const ConfigService &service) : mService(service) {}
        bool conciseStyle() const override { return mService.flag("conciseStyle", false); }
        bool crossLineBelowTitle() const override { return mService.flag("crossLineBelowTitle", false); }
        bool debugLog() const override { return mService.flag("debugLog", false); }

    private:
        const ConfigService &mService;
    };
    /// The user's part.
    class User : public TC::CUserConfig {
    public:
        explicit User(ConfigService &service) : mService(service) {}
        bool isBoardNewRules() const override { return mService.flag("boardNewRules", true); }
        bool hasFormulaEditorAuth() const override { return mService.flag("formulaEditor", true); }
        bool hasPermissionShowModel() const override { return mService.flag("showModels", true); }
        int subIndexRefresh() const override { return mService.number("subIndexRefresh", 0); }
        bool quickCancel() const override { return mService.flag("quickCancel", false); }
        /// Those of the trade service.
        QList<boost::shared_ptr<TC::CAccount>> accounts() const override;
        QString tableConfig(int tableId) const override;
        void setTableConfig(int tableId, const QString &text) override;

    private:
        ConfigService &mService;
    };

    TC::UserConfigRecord read() const override;
    void write(const TC::UserConfigRecord &record) override;

    bool flag(const char *name, bool fallback) const;
    int number(const char *name, int fallback) const;
    void load();
    bool readLate();
    void keepDamaged(const QString &reason);
    /// Changes fields and has the file written.
    void change(const QJsonObject &fields);
    void writeFile();
    void tell(const QString &message) const;

    const QString mPath;
    mutable std::mutex mLock; ///< guards what follows
    QJsonObject mFields;
    mutable QStringList mMessages;
    bool mUnread = false; ///< the file may be sound, and could not be read so far
    Program mProgram{*this};
    User mUser{*this};
    mutable NewestWriter mWriter;
};

/// A value of a configuration file that nobody has open yet, as ConfigService::value() will tell it; empty when the file is not
/// sound or has none.
QString keptValue(const QString &path, const QString &name);

} // namespace terminal
