#include "terminal/app/ImportDialog.h"

#include "host/toolkit/CFileQuestion.h"
#include "host/toolkit/Wording.h"
#include "terminal/app/ColumnDialog.h"
#include "terminal/app/ImportJob.h"
#include "terminal/market/ColumnChoice.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketSessions.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>

#include <algorithm>

namespace terminal {
namespace {

constexpr int kShownRows = 20; ///< of a preview
constexpr int kFilesHeight = 80; ///< pixels

/// A count with its thousands set apart.
QString shownCount(double count) {
    return GZ::countText(static_cast<qint64>(count));
}

double rateOf(double rows, const QElapsedTimer &since) {
    return rows * 1000.0 / static_cast<double>(std::max(since.elapsed(), qint64(1)));
}

template <class Widget> Widget *named(Widget *widget, const char *name) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}

} // namespace

bool ImportDialog::Entry::isReady() const {
    const bool isNamed = preview.severalInstruments || (!name.market.isEmpty() && !name.code.isEmpty());
    return !done && preview.error.isEmpty() && isNamed;
}

void ImportDialog::Entry::read() {
    preview = previewFile(path, columns);
    name = preview.severalInstruments ? InstrumentName{preview.told.market, {}} : preview.guess;
    failed = done = false;
}

ImportOptions ImportDialog::Entry::options(bool sessionsFromFile) const {
    ImportOptions options;
    options.columns = columns;
    options.sessionsFromFile = sessionsFromFile;
    options.market = name.market == preview.told.market ? QString() : name.market;
    if (!preview.severalInstruments) {
        options.code = name.code == preview.told.code ? QString() : name.code;
        options.name = title;
    }
    return options;
}

ImportDialog::ImportDialog(CMarketStore &store, QWidget *parent) : QDialog(parent), mStore(store) {
    setObjectName(QStringLiteral("import_dialog"));
    setWindowTitle(tr("导入行情"));
    setAttribute(Qt::WA_WindowPropagation); // the colours of the window, whenever they change
    setAttribute(Qt::WA_DeleteOnClose);
    auto *grid = new QGridLayout(this);
    buildFiles(grid, 0);
    buildInstrument(grid, 2);
    buildChoices(grid, 5);
    buildProgress(grid, 6);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(4, 1);
    resize(720, 560);
    refreshButtons();
    mPath->setFocus();
}

ImportDialog::~ImportDialog() = default;

void ImportDialog::buildFiles(QGridLayout *grid, int row) {
    mPath = named(new QLineEdit(this), "path");
    mPath->setPlaceholderText(tr("文件路径，按回车加入"));
    mChoose = named(new QPushButton(tr("选择文件(&F)…"), this), "choose");
    mFiles = named(new QListWidget(this), "files");
    mFiles->setFixedHeight(kFilesHeight);
    auto *label = new QLabel(tr("文件(&P)"), this);
    label->setBuddy(mPath);
    grid->addWidget(label, row, 0);
    grid->addWidget(mPath, row, 1);
    grid->addWidget(mChoose, row, 2);
    grid->addWidget(mFiles, row + 1, 0, 1, 3);
    mChoose->setAutoDefault(false);
    connect(mChoose, &QPushButton::clicked, this, &ImportDialog::chooseFiles);
    connect(mPath, &QLineEdit::returnPressed, this, &ImportDialog::addTyped);
    connect(mFiles, &QListWidget::currentRowChanged, this, &ImportDialog::showEntry);
}

void ImportDialog::buildInstrument(QGridLayout *grid, int row) {
    mMarket = named(new QComboBox(this), "market");
    mMarket->addItem(QString());
    mMarket->addItems(knownMarkets());
    mCode = named(new QLineEdit(this), "code");
    mName = named(new QLineEdit(this), "name");
    auto *fields = new QHBoxLayout;
    const auto addField = [this, fields](const QString &text, QWidget *field) {
        auto *label = new QLabel(text, this);
        label->setBuddy(field);
        fields->addWidget(label);
        fields->addWidget(field);
    };
    addField(tr("市场(&M)"), mMarket);
    addField(tr("代码(&C)"), mCode);
    addField(tr("名称(&N)"), mName);
    fields->addStretch(1);
    mInfo = named(new QLabel(this), "info");
    mInfo->setTextFormat(Qt::PlainText);
    mInfo->setWordWrap(true);
    mTable = named(new QTableWidget(this), "preview");
    mTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    mTable->verticalHeader()->hide();
    grid->addLayout(fields, row, 0, 1, 3);
    grid->addWidget(mInfo, row + 1, 0, 1, 3);
    grid->addWidget(mTable, row + 2, 0, 1, 3);
    connect(mMarket, QOverload<int>::of(&QComboBox::activated), this, &ImportDialog::takeName);
    connect(mCode, &QLineEdit::textEdited, this, &ImportDialog::takeName);
    connect(mName, &QLineEdit::textEdited, this, &ImportDialog::takeName);
}

void ImportDialog::buildChoices(QGridLayout *grid, int row) {
    mChoices.columns = named(new QPushButton(tr("列(&L)…"), this), "columns");
    mChoices.columns->setAutoDefault(false);
    mChoices.columns->setToolTip(tr("指定文件的哪一列是什么"));
    mChoices.sessions = named(new QCheckBox(tr("按文件中的时间确定每日的交易时段(&T)"), this), "sessions");
    auto *line = new QHBoxLayout;
    line->addWidget(mChoices.columns);
    line->addWidget(mChoices.sessions);
    line->addStretch(1);
    grid->addLayout(line, row, 0, 1, 3);
    connect(mChoices.columns, &QPushButton::clicked, this, &ImportDialog::chooseColumns);
    connect(mChoices.sessions, &QCheckBox::toggled, this, &ImportDialog::takeSessions);
}

void ImportDialog::buildProgress(QGridLayout *grid, int row) {
    mProgress.bar = named(new QProgressBar(this), "progress");
    mProgress.bar->setRange(0, 1000);
    mProgress.rate = named(new QLabel(this), "rate");
    mProgress.summary = named(new QLabel(this), "summary");
    mProgress.summary->setTextFormat(Qt::PlainText);
    mProgress.summary->setWordWrap(true);
    mProgress.summary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    mButtons.start = named(new QPushButton(tr("导入(&I)"), this), "start");
    mButtons.stop = named(new QPushButton(tr("停止(&S)"), this), "stop_import");
    mButtons.close = named(new QPushButton(tr("关闭"), this), "close");
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(mProgress.rate, 1);
    for (QPushButton *button : {mButtons.start, mButtons.stop, mButtons.close}) {
        button->setAutoDefault(false); // return belongs to the field that it is pressed in
        buttons->addWidget(button);
    }
    grid->addWidget(mProgress.bar, row, 0, 1, 3);
    grid->addWidget(mProgress.summary, row + 1, 0, 1, 3);
    grid->addLayout(buttons, row + 2, 0, 1, 3);
    connect(mButtons.start, &QPushButton::clicked, this, &ImportDialog::start);
    connect(mButtons.stop, &QPushButton::clicked, this, &ImportDialog::stop);
    connect(mButtons.close, &QPushButton::clicked, this, &ImportDialog::reject);
}

void ImportDialog::chooseFiles() {
    GZ::CFileQuestion dialog(this, tr("选择行情文件"), QString());
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setNameFilter(tr("行情文件 (*.csv *.txt);;所有文件 (*)"));
    dialog->setFileMode(QFileDialog::ExistingFiles);
    const QStringList paths = dialog.ask();
    for (const QString &path : paths) {
        addFile(path);
    }
}

void ImportDialog::addTyped() {
    const QString path = mPath->text().trimmed();
    if (!path.isEmpty()) {
        mPath->clear();
        addFile(path);
        mButtons.start->setFocus();
    }
}

void ImportDialog::addFile(const QString &path) {
    Entry entry;
    entry.path = path;
    entry.read();
    entry.columns = rememberedColumns(mStore, entry.preview.headings);
    if (!entry.columns.isEmpty()) {
        entry.read();
    }
    entry.title = titleOf(entry.name);
    mEntries.append(entry);
    mFiles->addItem(QFileInfo(path).fileName());
    mFiles->setCurrentRow(mEntries.size() - 1);
    refreshButtons();
}

QString ImportDialog::titleOf(const InstrumentName &name) const {
    const Instrument *known = mStore.catalogue()->find(name.market + name.code);
    return known ? known->name : QString();
}

void ImportDialog::showEntry(int index) {
    mShown = index;
    refreshButtons();
    if (index < 0) {
        return;
    }
    const Entry &entry = mEntries[index];
    mMarket->setCurrentIndex(std::max(mMarket->findText(entry.name.market), 0));
    mCode->setText(entry.name.code);
    mName->setText(entry.title);
    const bool one = entry.preview.error.isEmpty() && !entry.preview.severalInstruments;
    mCode->setEnabled(one);
    mCode->setPlaceholderText(entry.preview.severalInstruments ? tr("文件中有多只证券") : QString());
    mName->setEnabled(one && !mStore.catalogue()->find(entry.name.market + entry.name.code));
    mName->setPlaceholderText(entry.name.code);
    showPreview(entry);
}

void ImportDialog::showPreview(const Entry &entry) {
    const ImportPreview &preview = entry.preview;
    mTable->setRowCount(0);
    if (!preview.error.isEmpty()) {
        mInfo->setText(tr("无法导入：%1").arg(preview.error));
        mTable->setColumnCount(0);
        return;
    }
    const QString first = preview.firstDate.toString(GZ::kDateFormat);
    const QString last = preview.lastDate.toString(GZ::kDateFormat);
    mInfo->setText(tr("%1，%2，约 %3 行")
                       .arg(kindText(preview.kind), first == last ? first : tr("%1 至 %2").arg(first, last),
                            shownCount(preview.rowsAbout)));
    const QStringList headings = previewHeadings(preview.kind);
    mTable->setColumnCount(headings.size());
    mTable->setHorizontalHeaderLabels(headings);
    const int rows = std::min(int(preview.rows.size()), kShownRows);
    mTable->setRowCount(rows);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < headings.size(); ++column) {
            mTable->setItem(row, column, new QTableWidgetItem(preview.rows[row].value(column)));
        }
    }
    mTable->resizeColumnsToContents();
}

/// Takes in what the user has corrected.
void ImportDialog::takeName() {
    if (mShown < 0) {
        return;
    }
    Entry &entry = mEntries[mShown];
    const InstrumentName before = entry.name;
    entry.name = {mMarket->currentText(), mCode->text().trimmed()};
    const InstrumentName typed = readSymbol(entry.name.code, {});
    if (!typed.market.isEmpty() && !typed.code.isEmpty()) { // a code may be typed with its exchange
        entry.name = typed;
        mMarket->setCurrentIndex(std::max(mMarket->findText(typed.market), 0));
    }
    if (entry.name.market != before.market || entry.name.code != before.code) {
        const QString known = titleOf(entry.name);
        mName->setText(known);
        mName->setEnabled(known.isEmpty() && !entry.preview.severalInstruments);
        mName->setPlaceholderText(entry.name.code);
    }
    entry.title = mName->text().trimmed();
    entry.done = false;
    refreshButtons();
}

/// Asks which column of the file shown is what, and keeps the answer for files of the same headings.
void ImportDialog::chooseColumns() {
    if (mShown < 0 || mJob) {
        return;
    }
    Entry &entry = mEntries[mShown];
    ColumnDialog dialog(entry.path, entry.columns, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    entry.columns = dialog.columns();
    const QString trouble = rememberColumns(mStore, entry.preview.headings, entry.columns);
    if (!trouble.isEmpty()) {
        mProgress.summary->setText(trouble);
    }
    entry.read();
    entry.title = titleOf(entry.name);
    showEntry(mShown);
}

/// What could not be imported may be tried again the other way.
void ImportDialog::takeSessions() {
    for (Entry &entry : mEntries) {
        entry.done = entry.done && !entry.failed;
    }
    refreshButtons();
}

void ImportDialog::refreshButtons() {
    const bool ready =
        std::any_of(mEntries.begin(), mEntries.end(), [](const Entry &entry) { return entry.isReady(); });
    mButtons.start->setEnabled(ready && !mJob);
    mButtons.stop->setEnabled(mJob != nullptr);
    mButtons.close->setEnabled(!mJob);
    const std::initializer_list<QWidget *> whileIdle{mPath, mChoose, mMarket, mChoices.sessions};
    for (QWidget *widget : whileIdle) {
        widget->setEnabled(!mJob);
    }
    const bool isTable = mShown >= 0 && !mEntries[mShown].preview.fields.isEmpty();
    mChoices.columns->setEnabled(isTable && !mJob);
}

void ImportDialog::start() {
    mStopped = false;
    mResults.clear();
    mProgress.summary->clear();
    startNext();
}

void ImportDialog::startNext() {
    const auto next =
        std::find_if(mEntries.begin(), mEntries.end(), [](const Entry &e) { return e.isReady(); });
    if (next == mEntries.end() || mStopped) {
        finish();
        return;
    }
    mRunning = static_cast<int>(next - mEntries.begin());
    mFiles->setCurrentRow(mRunning);
    mJob = std::make_unique<ImportJob>(mStore, next->path, next->options(mChoices.sessions->isChecked()));
    connect(mJob.get(), &ImportJob::progress, this, &ImportDialog::onProgress);
    connect(mJob.get(), &ImportJob::finished, this, &ImportDialog::onFinished);
    mSince.start();
    mProgress.bar->setValue(0);
    refreshButtons();
    mButtons.stop->setFocus();
    mJob->start();
}

void ImportDialog::onProgress(int done, int total) {
    if (!mJob || total <= 0) {
        return; // a report that was still on its way
    }
    mProgress.bar->setValue(static_cast<int>(1000LL * done / total));
    const double rows = static_cast<double>(mEntries[mRunning].preview.rowsAbout) * done / total;
    mProgress.rate->setText(tr("%1 行/秒").arg(shownCount(rateOf(rows, mSince))));
}

void ImportDialog::onFinished() {
    const ImportOutcome outcome = mJob->outcome();
    mJob.release()->deleteLater(); // it is the sender
    Entry &entry = mEntries[mRunning];
    entry.done = outcome.isGood() || !mStopped;
    entry.failed = !outcome.isGood();
    if (outcome.isGood()) {
        const QString rate = shownCount(rateOf(outcome.rows, mSince));
        mResults.append(tr("%1（%2 行，%3 行/秒）").arg(importedText(outcome), shownCount(outcome.rows), rate));
        mProgress.bar->setValue(1000);
        const ImportedBars &first = outcome.instruments.first();
        Q_EMIT imported(first.key, dateOf(first.lastDay), importedText(outcome));
    } else if (mStopped) {
        mResults.append(tr("%1 的导入已停止，行情库未改变").arg(QFileInfo(entry.path).fileName()));
    } else {
        mResults.append(tr("导入失败，行情库未改变：%1").arg(outcome.error));
    }
    mResults += leftOutTexts(outcome);
    startNext();
}

void ImportDialog::stop() {
    mStopped = true;
    if (mJob) {
        mJob->stop();
    }
}

void ImportDialog::finish() {
    mRunning = -1;
    mProgress.summary->setText(mResults.join(QLatin1Char('\n')));
    mProgress.rate->clear();
    refreshButtons();
    mButtons.close->setFocus();
}

void ImportDialog::reject() {
    if (mJob) {
        stop();
    } else {
        QDialog::reject();
    }
}

} // namespace terminal
