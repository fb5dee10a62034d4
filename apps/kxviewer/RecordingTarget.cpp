// SPDX-License-Identifier: Apache-2.0
#include "RecordingTarget.h"

#include "ViewerSettings.h"

#include <Base/GCException.h>

#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QToolButton>

namespace
{

struct Kind
{
    const char* szEnding;
    const char* szText;
};

// The first is one file of all images; the others make a file of each in a folder of its own.
constexpr Kind kKinds[] = {
    {".kxseq", QT_TRANSLATE_NOOP("RecordingTarget", "One file of all images (kxseq)")},
    {".png", QT_TRANSLATE_NOOP("RecordingTarget", "PNG files")},
    {".tif", QT_TRANSLATE_NOOP("RecordingTarget", "TIFF files")},
    {".bmp", QT_TRANSLATE_NOOP("RecordingTarget", "BMP files")},
    {".jpg", QT_TRANSLATE_NOOP("RecordingTarget", "JPEG files")},
    {".kxraw", QT_TRANSLATE_NOOP("RecordingTarget", "Raw files (kxraw)")},
    {".csv", QT_TRANSLATE_NOOP("RecordingTarget", "CSV files")},
};

QString FirstFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::PicturesLocation) + "/KxApi";
}

} // namespace

RecordingTarget::RecordingTarget(QWidget* pParent)
    : QWidget(pParent)
    , m_pFolder(new QLineEdit(ViewerSettings().value("recording/folder", FirstFolder()).toString()))
    , m_pKind(new QComboBox)
{
    for (const Kind& kind : kKinds)
        m_pKind->addItem(tr(kind.szText), QString(kind.szEnding));
    m_pKind->setCurrentIndex(std::max(m_pKind->findData(ViewerSettings().value("recording/kind")), 0));
    // Long entries must not keep the dock wide.
    m_pKind->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_pFolder->setToolTip(tr("Folder that recordings go into, under the camera's name and the time"));
    m_pFolder->setAccessibleName(tr("Folder"));
    m_pKind->setAccessibleName(tr("Kind of file"));
    auto* const pBrowse = new QToolButton;
    pBrowse->setText("...");
    pBrowse->setToolTip(tr("Choose the folder"));
    pBrowse->setAccessibleName(pBrowse->toolTip());
    auto* const pRow = new QHBoxLayout;
    pRow->addWidget(m_pFolder);
    pRow->addWidget(pBrowse);
    auto* const pLayout = new QFormLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addRow(tr("Folder:"), pRow);
    pLayout->addRow(tr("As:"), m_pKind);
    connect(pBrowse, &QToolButton::clicked, this, &RecordingTarget::Browse);
    connect(m_pFolder, &QLineEdit::editingFinished, this, &RecordingTarget::Remember);
    connect(m_pKind, qOverload<int>(&QComboBox::activated), this, &RecordingTarget::Remember);
}

QString RecordingTarget::Folder() const { return m_pFolder->text(); }

void RecordingTarget::Remember() const
{
    ViewerSettings settings;
    settings.setValue("recording/folder", m_pFolder->text());
    settings.setValue("recording/kind", m_pKind->currentData());
}

void RecordingTarget::Browse()
{
    QFileDialog dialog(this, tr("Folder for recordings"), m_pFolder->text());
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() != QDialog::Accepted)
        return;
    m_pFolder->setText(dialog.selectedFiles().value(0));
    Remember();
}

std::string RecordingTarget::NewOutput(const QString& strCamera) const
{
    const QString strEnding = m_pKind->currentData().toString();
    const bool bOneFile = m_pKind->currentIndex() == 0;
    QString strName = strCamera;
    strName.replace(QRegularExpression("[^A-Za-z0-9_-]+"), "_"); // a % would be taken for the number's place
    while (strName.endsWith('_'))
        strName.chop(1);
    strName += QDateTime::currentDateTime().toString("_yyyy-MM-dd_HH-mm-ss");
    const QDir folder(m_pFolder->text());
    QString strNew = strName;
    for (int n = 2; folder.exists(bOneFile ? strNew + strEnding : strNew); ++n)
        strNew = strName + "_" + QString::number(n);
    const QString strFolder = bOneFile ? folder.path() : folder.filePath(strNew);
    if (strFolder.contains('%') && !bOneFile)
        throw RUNTIME_EXCEPTION("'%s' can't be used: the folder's name must not hold a %%",
                                strFolder.toUtf8().constData());
    if (m_pFolder->text().isEmpty() || !QDir().mkpath(strFolder))
        throw RUNTIME_EXCEPTION("the folder '%s' can't be made", strFolder.toUtf8().constData());
    return QDir(strFolder).filePath(bOneFile ? strNew + strEnding : "frame-%06d" + strEnding).toStdString();
}
