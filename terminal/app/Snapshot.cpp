#include "terminal/app/Snapshot.h"

#include "terminal/app/ChartView.h"
#include "terminal/app/WindowColors.h"
#include "toolkit/files/RegularFile.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLabel>
#include <QPixmap>
#include <QSaveFile>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace terminal {
namespace {

constexpr int kLongestWait = 20000; ///< milliseconds
constexpr int kTurn = 50; ///< milliseconds between two looks

QString notWritable(const QString &path, const QString &reason) {
    return QStringLiteral(
               "%1: the picture cannot be written (%2): give a file in a folder that you may write to")
        .arg(path, reason);
}

} // namespace

SnapshotSheet::SnapshotSheet(ChartSources sources, const QString &note)
    : mView(new ChartView(std::move(sources), this)) {
    setPalette(windowColors());
    setAutoFillBackground(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    if (!note.isEmpty()) {
        auto *label = new QLabel(note);
        label->setObjectName(QStringLiteral("snapshot_note"));
        label->setMargin(2);
        layout->addWidget(label);
    }
    layout->addWidget(mView, 1);
}

QString checkPicturePath(const QString &path) {
    const QString reason = GZ::RegularFile::notRegularReason(path);
    if (!reason.isEmpty()) { // else the picture would be put in its place
        return notWritable(path, reason);
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return notWritable(path, file.errorString());
    }
    file.cancelWriting();
    return {};
}

bool waitForChart(const ChartView &view) {
    QElapsedTimer since;
    since.start();
    while (!view.isComplete() && since.elapsed() < kLongestWait) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, kTurn);
    }
    return view.isComplete();
}

QString writePicture(QWidget &widget, const QString &path) {
    const QPixmap picture = widget.grab();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !picture.save(&file, "PNG") || !file.flush() || !file.commit()) {
        return notWritable(path, file.errorString());
    }
    return {};
}

} // namespace terminal
