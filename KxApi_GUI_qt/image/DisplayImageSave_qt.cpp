// SPDX-License-Identifier: Apache-2.0
// The image window's saving.
#include "image/KxDisplayImageWnd_qt.h"
#include "image/StillImageSave_qt.h"

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_TL/IKxImage.h>

#include <QFileDialog>

namespace KxApi
{

void CKxDisplayImageWnd::SaveImage(bool bPreview)
{
    // The application may give the window back while the user looks for a name.
    AddRef();
    try {
        SaveWithDialog(bPreview);
    } catch (const GenICam::GenericException& e) {
        ShowErrorMessage(e);
    } catch (...) {
        DelRef();
        throw;
    }
    DelRef();
}

void CKxDisplayImageWnd::ConvertAsShown(IKxImage* pImage, IKxImageBuffer* pTarget)
{
    const bool bAsShown =
        m_eBayerInterpolationMethodForStillImageFile == KxBayerInterpolationMethodForStillImageFile_Manual;
    ConvertLike(*m_pConverter,
                bAsShown ? m_pConverter->GetBayerInterpolationMethod() : KxBayerInterpolationMethod_Bilinear3,
                pImage, pTarget);
    IKxDrawingToolInside* const pDrawingTool = GetIKxDrawingToolInside();
    if (pDrawingTool && GetEnableDrawingOnSavingImage())
        pDrawingTool->DrawOnIKxImageBuffer(pTarget);
}

void CKxDisplayImageWnd::SaveWithDialog(bool bPreview)
{
    // Copies, so that the camera goes on while the user thinks.
    const CKxAutoPtr<IKxImageBufferReleasable> pRaw(CreateIKxImageBuffer(nullptr));
    const CKxAutoPtr<IKxImageBufferReleasable> pShown(CreateIKxImageBuffer(nullptr));
    pRaw->CopyImage(GetRegisteredIKxImage());
    if (bPreview)
        ConvertAsShown(pRaw->GetIKxImage(), pShown.Get());
    IKxImage* const pImage = (bPreview ? pShown : pRaw)->GetIKxImage();

    const CKxAutoPtr<IKxFilerReleasable, IKxStillImageFilerInside> pFiler(
        CreateIKxFiler(KxFilerType_StillImage));
    pFiler->SetColorMapType(GetColorMapType());
    pFiler->SetColorMapInversion(GetColorMapInversion());
    pFiler->SetColorMapPhase(GetColorMapPhase());

    QString strSelectedFilter;
    const QString strName =
        QFileDialog::getSaveFileName(nullptr, "Save Still Image File", m_strLastSaveFolder,
                                     StillImageFilters(*pFiler, pImage->GetImagePixelFormat()),
                                     &strSelectedFilter, QFileDialog::DontUseNativeDialog);
    if (strName.isEmpty())
        return;
    const CStillImageFileName file = CompletedFileName(strName, strSelectedFilter);
    pFiler->Save(pImage, file.eFileType, ToGcstring(file.strName));
    m_strLastSaveFolder = file.strName.left(file.strName.lastIndexOf('/'));
}

} // namespace KxApi
