// SPDX-License-Identifier: Apache-2.0
#include "graph/GraphSave_qt.h"

#include "frame/SaveFileName_qt.h"
#include "frame/utility_qt.h"
#include "graph/ICDisplayGraphDlgParent.h"

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_IP/IKxGraphDataBufferList.h>
#include <KxApi_IP/IKxStillImageFiler.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImageBuffer.h>

namespace KxApi
{
namespace
{

// In the order of the dialogs' filters.
// clang-format off
const std::vector<CSaveFileType> kImageTypes = {
    {KxStillImageFileType_Bmp,  ".bmp", "Bitmap File (*.bmp)"},
    {KxStillImageFileType_Jpeg, ".jpg", "Jpeg File (*.jpg)"},
    {KxStillImageFileType_Tiff, ".tif", "Tiff File (*.tif)"},
    {KxStillImageFileType_Png,  ".png", "PNG File (*.png)"},
};
const std::vector<CSaveFileType> kDataTypes = {
    {KxGraphDataFileType_Csv, ".csv",   "CSV File (*.csv)"},
    {KxGraphDataFileType_Raw, ".kxraw", "KxRaw File (*.kxraw)"},
};
// clang-format on

template <class Function>
QString ShowingErrors(Function function)
{
    try {
        return function();
    } catch (const GenICam::GenericException& e) {
        ShowErrorMessage(e);
        return {};
    }
}

} // namespace

QString SaveGraphImage(IKxGraphDisplayWndInside& window, QString strFolder)
{
    return ShowingErrors([&] {
        const CKxAutoPtr<IKxImageBufferReleasable> pPicture(CreateIKxImageBuffer(nullptr));
        window.GetIKxImage(pPicture.Get(), 0, 0);
        const CKxAutoPtr<IKxFilerReleasable> pFiler(CreateIKxFiler(KxFilerType_StillImage));
        const CSaveFileName file = AskForFileName("Save Still Image File", strFolder, kImageTypes);
        if (!file.strName.isEmpty())
            pFiler->Save(pPicture->GetIKxImage(), static_cast<EKxStillImageFileType_t>(file.nCode),
                         ToGcstring(file.strName));
        return file.Folder();
    });
}

QString SaveGraphData(const std::function<const IKxGraphDataBufferList*()>& data, QString strFolder)
{
    return ShowingErrors([&] {
        const CSaveFileName file = AskForFileName("Save Graph Data", strFolder, kDataTypes);
        const IKxGraphDataBufferList* const pList = file.strName.isEmpty() ? nullptr : data();
        if (!pList)
            return QString();
        pList->SaveToFile(static_cast<EKxGraphDataFileType_t>(file.nCode), ToGcstring(file.strName));
        return file.Folder();
    });
}

} // namespace KxApi
