// SPDX-License-Identifier: Apache-2.0
#include "SnapshotFile.h"

#include "CameraView.h"
#include "ViewerSettings.h"

#include <KxApi_IP/IKxStillImageFiler.h>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <algorithm>

using namespace KxApi;

namespace
{

struct TypeRow
{
    const char* szEndings;
    const char* szFilter;
    EKxStillImageFileType_t eType;
};

constexpr TypeRow kTypes[] = {
    {"png", "PNG (*.png)", KxStillImageFileType_Png},
    {"tif tiff", "TIFF (*.tif *.tiff)", KxStillImageFileType_Tiff},
    {"bmp", "BMP (*.bmp)", KxStillImageFileType_Bmp},
    {"jpg jpeg", "JPEG (*.jpg *.jpeg)", KxStillImageFileType_Jpeg},
    {"kxraw", "Raw (*.kxraw)", KxStillImageFileType_Raw},
    {"csv", "CSV (*.csv)", KxStillImageFileType_Csv},
};

GenICam::gcstring PathOf(const QString& strFile) { return strFile.toUtf8().constData(); }

CKxAutoPtr<IKxFilerReleasable> FilerFor(IKxImageDisplayWnd& window)
{
    CKxAutoPtr<IKxFilerReleasable> filer(CreateIKxFiler(KxFilerType_StillImage));
    filer->SetColorMapType(window.GetColorMapType());
    filer->SetColorMapInversion(window.GetColorMapInversion());
    filer->SetColorMapPhase(window.GetColorMapPhase());
    return filer;
}

} // namespace

QString FileTime() { return QDateTime::currentDateTime().toString("_yyyyMMdd_HHmmss_zzz"); }

QString SnapshotName(const CameraView& view)
{
    return view.Title().replace(QRegularExpression("[^\\w-]+"), "_").remove(QRegularExpression("_$")) +
           FileTime() + ".png";
}

QString SaveSnapshot(CameraView& view)
{
    const QString strFolder = ViewerSettings::Folder(
        "pictures", QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
    if (!QDir().mkpath(strFolder))
        throw RUNTIME_EXCEPTION("the folder '%s' can't be made", strFolder.toUtf8().constData());
    QString strFile = QDir(strFolder).filePath(SnapshotName(view));
    FilerFor(view.Window())
        ->Save(view.Window().GetConvertedIKxImage(), KxStillImageFileType_Png, PathOf(strFile));
    return strFile;
}

void SaveImageAs(CameraView& view, const QString& strFile)
{
    const QString strEnding = QFileInfo(strFile).suffix().toLower();
    const auto row = std::find_if(std::begin(kTypes), std::end(kTypes), [&](const TypeRow& candidate) {
        return !strEnding.isEmpty() && QString(candidate.szEndings).split(' ').contains(strEnding);
    });
    if (row == std::end(kTypes))
        throw INVALID_ARGUMENT_EXCEPTION("'%s' doesn't end as an image file does",
                                         strFile.toUtf8().constData());
    const auto filer = FilerFor(view.Window());
    IKxImage* const pCamera = view.Window().GetRegisteredIKxImage();
    IKxImage* const pImage = filer->IsSavable(pCamera->GetImagePixelFormat(), row->eType)
                                 ? pCamera
                                 : view.Window().GetConvertedIKxImage();
    filer->Save(pImage, row->eType, PathOf(strFile));
}

QStringList ImageFileFilters()
{
    QStringList filters;
    for (const TypeRow& row : kTypes)
        filters += row.szFilter;
    return filters;
}
