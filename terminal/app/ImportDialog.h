#pragma once

#include "terminal/market/CMarketStore.h"
#include "terminal/market/ImportOptions.h"
#include "terminal/market/ImportPreview.h"

#include <QDate>
#include <QDialog>
#include <QElapsedTimer>
#include <QStringList>
#include <QVector>

#include <memory>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;
class QTableWidget;

namespace terminal {

class ImportJob;

/// Imports files of market data: which files, what is in them, of which instrument it is, how far the import has come
/// and what came of it. It looks as the window that it is opened from.
///
/// Escape stops a running import, which leaves the store as it was before the file, and otherwise closes the dialog.
class ImportDialog : public QDialog {
    Q_OBJECT
public:
    ImportDialog(CMarketStore &store, QWidget *parent);
    /// Stops a running import and waits for its end.
    ~ImportDialog() override;

    /// Adds a file and shows its preview.
    void addFile(const QString &path);
    bool isImporting() const { return mJob != nullptr; }
    void reject() override;

Q_SIGNALS:
    /// A file was imported: the first instrument of it, its last day, and what was imported in words.
    void imported(const QString &key, const QDate &day, const QString &text);

private:
    /// A file and what is to be done with it.
    struct Entry {
        QString path;
        ImportPreview preview;
        InstrumentName name; ///< as the user wants it
        QString title; ///< name of the instrument
        QString columns; ///< which column is what, when the user has said so for such headings
        bool failed = false; ///< its import did, and may be tried another way
        bool done = false;

        bool isReady() const;
        ImportOptions options(bool sessionsFromFile) const;
        /// Reads the file anew, and what it tells of its instrument.
        void read();
    };

    void buildFiles(QGridLayout *grid, int row);
    void buildInstrument(QGridLayout *grid, int row);
    void buildChoices(QGridLayout *grid, int row);
    void buildProgress(QGridLayout *grid, int row);
    void chooseFiles();
    void addTyped();
    void showEntry(int index);
    void showPreview(const Entry &entry);
    void takeName();
    void chooseColumns();
    void takeSessions();
    void refreshButtons();
    void start();
    void startNext();
    void onProgress(int done, int total);
    void onFinished();
    void stop();
    void finish();
    QString titleOf(const InstrumentName &name) const;

    CMarketStore &mStore;
    QVector<Entry> mEntries;
    int mShown = -1; ///< entry in the fields
    int mRunning = -1; ///< entry that is imported
    std::unique_ptr<ImportJob> mJob;
    QElapsedTimer mSince;
    bool mStopped = false;
    QStringList mResults;

    QLineEdit *mPath = nullptr;
    QPushButton *mChoose = nullptr;
    QListWidget *mFiles = nullptr;
    QLabel *mInfo = nullptr;
    QComboBox *mMarket = nullptr;
    QLineEdit *mCode = nullptr;
    QLineEdit *mName = nullptr;
    QTableWidget *mTable = nullptr;
    /// How far the import has come, and what came of it.
    struct Progress {
        QProgressBar *bar = nullptr;
        QLabel *rate = nullptr;
        QLabel *summary = nullptr;
    };
    Progress mProgress;
    /// How a file is read.
    struct Choices {
        QPushButton *columns = nullptr;
        QCheckBox *sessions = nullptr;
    };
    Choices mChoices;
    struct Buttons {
        QPushButton *start = nullptr;
        QPushButton *stop = nullptr;
        QPushButton *close = nullptr;
    };
    Buttons mButtons;
};

} // namespace terminal
