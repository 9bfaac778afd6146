#include "terminal/app/FormulaExport.h"

#include "host/services/CFormulaOperateManager.h"
#include "host/toolkit/CFileQuestion.h"
#include "toolkit/files/RegularFile.h"
#include "toolkit/windows/WindowLook.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QSaveFile>

#include <utility>

namespace terminal {
namespace {

constexpr qint64 kLargestScript = 16LL * 1000 * 1000; ///< bytes

struct Words {
    Q_DECLARE_TR_FUNCTIONS(FormulaExport)
};

/// The text of a formula or of a script model; empty when there is none.
QByteArray textOf(const QString &formula) {
    TC::CFormulaOperateManager &catalogue = TC::CSingletonT<TC::CFormulaOperateManager>::instance();
    const QString text = catalogue.source(formula).mText;
    if (!text.isEmpty()) {
        return text.toUtf8();
    }
    const QString script = catalogue.pythonDir() + QLatin1Char('/') + formula.toUpper() + QStringLiteral(".py");
    return GZ::RegularFile(script).whole(kLargestScript);
}

void setLabels(QFileDialog &dialog) {
    for (const auto &[part, text] : {std::pair(QFileDialog::LookIn, Words::tr("文件夹")),
                                     std::pair(QFileDialog::FileName, Words::tr("文件名")),
                                     std::pair(QFileDialog::FileType, Words::tr("类型")),
                                     std::pair(QFileDialog::Accept, Words::tr("保存")),
                                     std::pair(QFileDialog::Reject, Words::tr("取消"))}) {
        dialog.setLabelText(part, text);
    }
}

} // namespace

ExportOutcome askFormulaExport(const QString &formula, QWidget *parent) {
    if (formula.isEmpty()) {
        return {Words::tr("主图只有系统公式，没有可导出的公式"), true};
    }
    const TC::CFormulaDetailPtr detail =
        TC::CSingletonT<TC::CFormulaOperateManager>::instance().getFormula(formula);
    const bool isScript = detail && detail->mLanguage == TC::EFormulaLanguage::Python;
    const QString ending = isScript ? QStringLiteral(".py") : QStringLiteral(".lua");
    GZ::CFileQuestion dialog(parent, Words::tr("导出公式"), QDir::homePath());
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setNameFilter(Words::tr("公式 (*%1)").arg(ending));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(ending.mid(1));
    dialog->selectFile((detail ? detail->mName : formula) + ending);
    setLabels(*dialog);
    dialog->setPalette(GZ::windowPalette());
    const QString path = dialog.ask().value(0);
    return path.isEmpty() ? ExportOutcome() : exportFormula(formula, path);
}

ExportOutcome exportFormula(const QString &formula, const QString &path) {
    const QByteArray text = textOf(formula);
    if (text.isEmpty()) {
        return {Words::tr("%1 没有可导出的内容").arg(formula), true};
    }
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush() && file.commit()) {
        return {Words::tr("%1 已导出到 %2").arg(formula, path)};
    }
    return {Words::tr("文件 %1 无法写入（%2）").arg(path, file.errorString()), true};
}

} // namespace terminal
