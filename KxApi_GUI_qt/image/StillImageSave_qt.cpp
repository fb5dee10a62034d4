// SPDX-License-Identifier: Apache-2.0
#include "image/StillImageSave_qt.h"

#include <GenApi/GenApi.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

namespace KxApi
{
namespace
{

struct CFileTypeRow
{
    EKxStillImageFileType_t eFileType;
    const char* szExtension;
    const char* szFilter;
};

// In the order of the dialog's filters.
// clang-format off
constexpr CFileTypeRow kFileTypes[] = {
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

QString StillImageFilters(const IKxStillImageFiler& filer, EKxPixelFormatNamingConvention_t ePixelFormat)
{
    QString strFilters;
    for (const CFileTypeRow& row : kFileTypes) {
        if (!filer.IsSavable(ePixelFormat, row.eFileType))
            continue;
        if (!strFilters.isEmpty())
            strFilters += ";;";
        strFilters += row.szFilter;
    }
    return strFilters;
}

CStillImageFileName CompletedFileName(const QString& strName, const QString& strSelectedFilter)
{
    for (const CFileTypeRow& row : kFileTypes) {
        if (strSelectedFilter.compare(row.szFilter, Qt::CaseInsensitive) != 0)
            continue;
        const bool bComplete = strName.endsWith(row.szExtension, Qt::CaseInsensitive);
        return {row.eFileType, bComplete ? strName : strName + row.szExtension};
    }
    return {KxStillImageFileType_Bmp, strName};
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
