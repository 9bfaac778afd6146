#include "host/toolkit/CFileQuestion.h"

#include <QFileDialog>
#include <QTimer>

namespace GZ {

CFileQuestion::CFileQuestion(QWidget *parent, const QString &caption, const QString &directory)
    : mDialog(new QFileDialog(parent, caption, directory)) {}

CFileQuestion::~CFileQuestion() {
    if (mDialog) {
        mDialog->hide();
        QTimer::singleShot(kRest, mDialog.data(), &QObject::deleteLater);
    }
}

QFileDialog *CFileQuestion::operator->() const {
    return mDialog.data();
}

QFileDialog &CFileQuestion::operator*() const {
    return *mDialog;
}

QStringList CFileQuestion::ask() {
    const bool isChosen = mDialog->exec() == QDialog::Accepted && mDialog;
    return isChosen ? mDialog->selectedFiles() : QStringList();
}

} // namespace GZ
