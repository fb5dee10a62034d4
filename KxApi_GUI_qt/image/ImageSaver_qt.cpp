// SPDX-License-Identifier: Apache-2.0
#include "image/ImageSaver_qt.h"

#include "frame/SaveFileName_qt.h"
#include "frame/utility_qt.h"
#include "image/ImagePreview_qt.h"
#include "image/StillImageSave_qt.h"

#include <QStandardPaths>

namespace KxApi
{

CImageSaver::CImageSaver()
    : m_strLastSaveFolder(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation))
{}

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

    const CSaveFileName file = AskForFileName("Save Still Image File", m_strLastSaveFolder,
                                              StillImageTypes(*pFiler, pImage->GetImagePixelFormat()));
    if (file.strName.isEmpty())
        return;
    pFiler->Save(pImage, static_cast<EKxStillImageFileType_t>(file.nCode), ToGcstring(file.strName));
    m_strLastSaveFolder = file.Folder();
}

} // namespace KxApi
