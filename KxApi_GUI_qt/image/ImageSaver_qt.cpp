// SPDX-License-Identifier: Apache-2.0
#include "image/ImageSaver_qt.h"

#include "frame/utility_qt.h"
#include "image/ImagePreview_qt.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>

namespace KxApi
{
namespace
{

constexpr const char* kCaption = "Save Still Image File";

/// What the file dialog asks too, in the words that it has for it.
bool MayReplace(const QString& strName)
{
    const QString strQuestion =
        QCoreApplication::translate("QFileDialog", "%1 already exists.\nDo you want to replace it?");
    return QMessageBox::warning(nullptr, kCaption, strQuestion.arg(QFileInfo(strName).fileName()),
                                QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

} // namespace

CImageSaver::CImageSaver()
    : m_strLastSaveFolder(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation))
{}

CStillImageFileName CImageSaver::AskForName(const QString& strFilters)
{
    QString strStart = m_strLastSaveFolder, strFilter;
    for (;;) {
        const QString strName = QFileDialog::getSaveFileName(nullptr, kCaption, strStart, strFilters,
                                                             &strFilter, QFileDialog::DontUseNativeDialog);
        if (strName.isEmpty())
            return {};
        CStillImageFileName file = CompletedFileName(strName, strFilter);
        // The dialog asked about the name that it knew.
        if (file.strName == strName || !QFileInfo::exists(file.strName) || MayReplace(file.strName))
            return file;
        strStart = strName;
    }
}

void CImageSaver::Save(CImagePreview& preview, const COptions& options)
{
    const CKxAutoPtr<IKxImageBufferReleasable> pRaw(CreateIKxImageBuffer(nullptr));
    const CKxAutoPtr<IKxImageBufferReleasable> pShown(CreateIKxImageBuffer(nullptr));
    pRaw->CopyImage(preview.GetRegistered());
    if (options.bPreview) {
        IKxPixelFormatConverterInside& converter = preview.Converter();
        ConvertLike(converter,
                    options.bBayerAsShown ? converter.GetBayerInterpolationMethod()
                                          : KxBayerInterpolationMethod_Bilinear3,
                    pRaw->GetIKxImage(), pShown.Get());
        if (options.draw)
            options.draw(pShown.Get());
    }
    IKxImage* const pImage = (options.bPreview ? pShown : pRaw)->GetIKxImage();

    const CKxAutoPtr<IKxFilerReleasable, IKxStillImageFilerInside> pFiler(
        CreateIKxFiler(KxFilerType_StillImage));
    pFiler->SetColorMapType(options.objColorMap.eType);
    pFiler->SetColorMapInversion(options.objColorMap.bInversion);
    pFiler->SetColorMapPhase(options.objColorMap.nPhase);

    const CStillImageFileName file = AskForName(StillImageFilters(*pFiler, pImage->GetImagePixelFormat()));
    if (file.strName.isEmpty())
        return;
    pFiler->Save(pImage, file.eFileType, ToGcstring(file.strName));
    m_strLastSaveFolder = file.strName.left(file.strName.lastIndexOf('/'));
}

} // namespace KxApi
