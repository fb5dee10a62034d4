// SPDX-License-Identifier: Apache-2.0
#include "image/StillImageSave_qt.h"

#include <GenApi/GenApi.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

namespace KxApi
{
namespace
{

// In the order of the dialog's filters.
// clang-format off
constexpr CSaveFileType kFileTypes[] = {
    {KxStillImageFileType_Bmp,  ".bmp",   "Bitmap File (*.bmp)"},
    {KxStillImageFileType_Jpeg, ".jpg",   "Jpeg File (*.jpg)"},
    {KxStillImageFileType_Tiff, ".tif",   "Tiff File (*.tif)"},
    {KxStillImageFileType_Png,  ".png",   "PNG File (*.png)"},
    {KxStillImageFileType_Csv,  ".csv",   "CSV File (*.csv)"},
    {KxStillImageFileType_Raw,  ".kxraw", "KxRaw File (*.kxraw)"},
};
// clang-format on

void CopyPolarization(IKxPixelFormatConverterInside& from, IKxPixelFormatConverterInside& to)
{
    const auto eMethod = from.GetPolarizationImageTransformationMethod();
    to.SetPolarizationImageTransformationMethod(eMethod);
    if (eMethod == KxPolarizationImageTransformationMethod_SpecifiedAngle) {
        to.SetPolarizationSpecifiedAngle(from.GetPolarizationSpecifiedAngle());
        to.SetPolarizationSpecifiedAngleInterpolationMethod(
            from.GetPolarizationSpecifiedAngleInterpolationMethod());
    }
    if (eMethod == KxPolarizationImageTransformationMethod_ADOLP) {
        to.SetADOLPDarkMode(from.GetADOLPDarkMode());
        to.SetADOLPColorInversion(from.GetADOLPColorInversion());
        to.SetADOLPColorPhase(from.GetADOLPColorPhase());
    }
}

void CopyColorMap(const IKxPixelFormatConverterInside& from, IKxPixelFormatConverterInside& to)
{
    to.SetColorMapType(from.GetColorMapType());
    to.SetColorMapInversion(from.GetColorMapInversion());
    to.SetColorMapPhase(from.GetColorMapPhase());
}

bool IsSingleComponent(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    const IKxPixelFormatInfo* const pInfo = GetIKxPixelFormatInfo(ePixelFormat);
    return pInfo && pInfo->IsSingleComponent();
}

} // namespace

std::vector<CSaveFileType> StillImageTypes(const IKxStillImageFiler& filer,
                                           EKxPixelFormatNamingConvention_t ePixelFormat)
{
    std::vector<CSaveFileType> types;
    for (const CSaveFileType& type : kFileTypes) {
        if (filer.IsSavable(ePixelFormat, static_cast<EKxStillImageFileType_t>(type.nCode)))
            types.push_back(type);
    }
    return types;
}

void ConvertLike(IKxPixelFormatConverterInside& preview, EKxBayerInterpolationMethod_t eBayerMethod,
                 IKxImage* pSource, IKxImageBuffer* pTarget)
{
    const CKxAutoPtr<IKxConverterReleasable, IKxPixelFormatConverterInside> pConverter(
        CreateIKxConverter(KxConverterType_PixelFormat));
    const EKxPixelFormatNamingConvention_t eDestination = preview.GetDestinationPixelFormat();
    pConverter->SetBayerInterpolationMethod(eBayerMethod);
    pConverter->SetBitExpansionMode(preview.GetBitExpansionMode());
    if (!IsSingleComponent(eDestination))
        CopyColorMap(preview, *pConverter);
    CopyPolarization(preview, *pConverter);
    pConverter->SetGamma(preview.GetGamma());
    pConverter->SetReverseY(preview.GetReverseY());
    pConverter->SetDestinationPixelFormat(eDestination);
    pConverter->Convert(pSource, pTarget);
}

} // namespace KxApi
