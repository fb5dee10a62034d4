// SPDX-License-Identifier: Apache-2.0

#include "COutputFile.h"
#include "Decoding.h"
#include "Encoding.h"
#include "FileErrors.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCCheckRange.h>
#include <Base/GCException.h>
#include <KxApi_IP/IKxStillImageFiler.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>
#include <KxApi_TL/KxApi_TL.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace KxApi
{
namespace
{

using namespace Detail;

using CEncoder = void (*)(const CImageValues&, const CEncodeOptions&, COutputFile&);

struct CFileTypeRow
{
    EKxStillImageFileType_t eType;
    const char* szName;
    CEncoder encode;    ///< null for the types that aren't pictures
    unsigned nMaxDepth; ///< of pictures, in bits
};

// clang-format off
constexpr CFileTypeRow kFileTypes[] = {
    {KxStillImageFileType_Raw,  "kxraw", nullptr,    0},
    {KxStillImageFileType_Bmp,  "BMP",   EncodeBmp,  8},
    {KxStillImageFileType_Jpeg, "JPEG",  EncodeJpeg, 8},
    {KxStillImageFileType_Tiff, "TIFF",  EncodeTiff, 16},
    {KxStillImageFileType_Png,  "PNG",   EncodePng,  16},
    {KxStillImageFileType_Csv,  "CSV",   nullptr,    0},
};
// clang-format on

const CFileTypeRow* FindFileType(EKxStillImageFileType_t eFileType)
{
    const auto* const found = std::find_if(std::begin(kFileTypes), std::end(kFileTypes),
                                           [=](const CFileTypeRow& row) { return row.eType == eFileType; });
    return found != std::end(kFileTypes) ? found : nullptr;
}

/// A type of 8 bits keeps no name of a format, so that it takes only what a reader can't take for something
/// else: a mosaic would come back as grey.
bool NeedsName(const CPixelFormatRow& row)
{
    return row.componentCount == 1 &&
           !(row.flags & kSingle && row.components[0].component == KxPixelComponent_Mono);
}

uint32_t CheckedRange(const char* szName, uint32_t nValue, uint32_t nMin, uint32_t nMax)
{
    KXGC_CHECK_RANGE(rlFromMin, szName, nValue, nMin);
    KXGC_CHECK_RANGE(rlUpToMax, szName, nValue, nMax);
    return nValue;
}

/// Gives the buffer the decoded image.
void Deliver(CDecodedImage& image, IKxImageBuffer& buffer)
{
    buffer.SetSize(image.width, image.height, image.format, image.isPitchTold ? image.linePitch : 0);
    const IKxImage& target = *buffer.GetIKxImage();
    auto* pLine = static_cast<uint8_t*>(target.GetImageBuffer());
    const size_t nPitch = target.GetImageLinePitch();
    if (nPitch == image.linePitch) {
        std::memcpy(pLine, image.pixels.data.get(), image.pixels.size);
        return;
    }
    if (nPitch < image.linePitch)
        throw LOGICAL_ERROR_EXCEPTION("The image buffer made lines of %zu bytes where %zu are needed", nPitch,
                                      image.linePitch);
    for (size_t y = 0; y < image.height; ++y, pLine += nPitch)
        std::memcpy(pLine, image.Line(y), image.linePitch);
}

void Decode(const CFileContent& content, IKxImageBuffer& buffer)
{
    CDecodedImage image = DecodeImageFile(content);
    Deliver(image, buffer);
}

class CKxStillImageFiler final : public IKxFilerReleasable
{
public:
    virtual ~CKxStillImageFiler() = default;

    bool IsSavable(EKxPixelFormatNamingConvention_t ePixelFormat,
                   EKxStillImageFileType_t eFileType) const override;
    void Save(IKxImage* pImage, EKxStillImageFileType_t eFileType, const GenICam::gcstring& strPath) override;
    void Load(IKxImageBuffer* pBuffer, const GenICam::gcstring& strPath) override;
    void LoadFromMemory(IKxImageBuffer* pBuffer, const void* pData, size_t nSize) override;

    uint32_t GetJpegQuality() const override { return m_nJpegQuality; }
    void SetJpegQuality(uint32_t nQuality) override
    {
        m_nJpegQuality = CheckedRange("nQuality", nQuality, 1, 100);
    }
    uint32_t GetPngCompression() const override { return m_nPngCompression; }
    void SetPngCompression(uint32_t nLevel) override
    {
        m_nPngCompression = CheckedRange("nLevel", nLevel, 0, 9);
    }
    uint64_t GetMaxLoadSize() const override { return m_nMaxLoadSize; }
    void SetMaxLoadSize(uint64_t nBytes) override
    {
        if (nBytes == 0)
            throw OUT_OF_RANGE_EXCEPTION("nBytes = 0 must be greater than Min = 0");
        m_nMaxLoadSize = nBytes;
    }

    EKxColorMapType_t GetColorMapType() const override { return m_eColorMapType; }
    void SetColorMapType(EKxColorMapType_t eType) override
    {
        m_eColorMapType = static_cast<EKxColorMapType_t>(
            CheckedRange("eType", static_cast<uint32_t>(eType), 0, KxColorMapType_PseudoColorBGRB));
    }
    bool GetColorMapInversion() const override { return m_bColorMapInversion; }
    void SetColorMapInversion(bool bInversion) override { m_bColorMapInversion = bInversion; }
    int32_t GetColorMapPhase() const override { return m_nColorMapPhase; }
    void SetColorMapPhase(int32_t nPhase) override { m_nColorMapPhase = nPhase; }

    void Release() override { delete this; }

private:
    bool HasColorMap() const;
    void Encode(IKxImage& image, const CImageValues& values, const CFileTypeRow& row,
                COutputFile& file) const;

    uint32_t m_nJpegQuality = 90;
    uint32_t m_nPngCompression = 1;
    uint64_t m_nMaxLoadSize = uint64_t{4} << 30;
    EKxColorMapType_t m_eColorMapType = KxColorMapType_Normal;
    bool m_bColorMapInversion = false;
    int32_t m_nColorMapPhase = 0;
};

bool CKxStillImageFiler::HasColorMap() const
{
    return m_eColorMapType != KxColorMapType_Normal || m_bColorMapInversion || m_nColorMapPhase % 256 != 0;
}

bool CKxStillImageFiler::IsSavable(EKxPixelFormatNamingConvention_t ePixelFormat,
                                   EKxStillImageFileType_t eFileType) const
{
    const CPixelFormatRow* const format = FindFormat(ePixelFormat);
    const CFileTypeRow* const type = FindFileType(eFileType);
    if (!format || !type || !type->encode)
        return format && type;
    const std::optional<CPictureForm> form = FindPictureForm(ePixelFormat);
    if (!form || (HasColorMap() && format->flags & kSingle))
        return form.has_value();
    return form->depth <= type->nMaxDepth && (type->nMaxDepth > 8 || !NeedsName(*format));
}

void CKxStillImageFiler::Encode(IKxImage& image, const CImageValues& values, const CFileTypeRow& row,
                                COutputFile& file) const
{
    if (row.eType == KxStillImageFileType_Raw)
        return EncodeRaw(values, file);
    if (row.eType == KxStillImageFileType_Csv)
        return EncodeCsv(image, values, file);
    CColorTable colors{};
    if (HasColorMap())
        SetColorMap(colors.data(), m_eColorMapType, m_bColorMapInversion, m_nColorMapPhase);
    row.encode(values, {m_nJpegQuality, m_nPngCompression, HasColorMap() ? &colors : nullptr}, file);
}

void CKxStillImageFiler::Save(IKxImage* pImage, EKxStillImageFileType_t eFileType,
                              const GenICam::gcstring& strPath)
{
    const std::string shown = ShownPath({strPath.c_str(), strPath.size()});
    const CFileTypeRow* const row = FindFileType(eFileType);
    if (!row)
        throw INVALID_ARGUMENT_EXCEPTION("Cannot write '%s': %d is no type of image files", shown.c_str(),
                                         static_cast<int>(eFileType));
    try {
        const CImageValues values(pImage);
        const EKxPixelFormatNamingConvention_t format = pImage->GetImagePixelFormat();
        if (!IsSavable(format, eFileType))
            throw INVALID_ARGUMENT_EXCEPTION("%s can't be saved in a %s file", values.Format().name,
                                             row->szName);
        GenICam::GuardBadAlloc([&] {
            COutputFile file(strPath);
            Encode(*pImage, values, *row, file);
            file.Commit();
        });
    } catch (const GenICam::InvalidArgumentException& e) {
        throw INVALID_ARGUMENT_EXCEPTION("Cannot write '%s': %s", shown.c_str(), e.GetDescription());
    } catch (const GenICam::LogicalErrorException& e) {
        throw LOGICAL_ERROR_EXCEPTION("Cannot write '%s': %s", shown.c_str(), e.GetDescription());
    } catch (const GenICam::RuntimeException& e) {
        throw RUNTIME_EXCEPTION("Cannot write '%s': %s", shown.c_str(), e.GetDescription());
    }
}

void CKxStillImageFiler::Load(IKxImageBuffer* pBuffer, const GenICam::gcstring& strPath)
{
    if (!pBuffer)
        throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
    // No file is much larger than its image.
    const uint64_t nHeadroom = std::min(std::numeric_limits<uint64_t>::max() - m_nMaxLoadSize,
                                        m_nMaxLoadSize / 16 + (uint64_t{1} << 20));
    GenICam::GuardBadAlloc([&] {
        const CBytes bytes = ReadFile(strPath, m_nMaxLoadSize + nHeadroom);
        Decode({bytes.data.get(), bytes.size, m_nMaxLoadSize, ShownPath({strPath.c_str(), strPath.size()})},
               *pBuffer);
    });
}

void CKxStillImageFiler::LoadFromMemory(IKxImageBuffer* pBuffer, const void* pData, size_t nSize)
{
    if (!pBuffer || !pData)
        throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
    GenICam::GuardBadAlloc([&] {
        Decode({static_cast<const uint8_t*>(pData), nSize, m_nMaxLoadSize, "memory"}, *pBuffer);
    });
}

} // namespace

IKxFilerReleasable* CreateIKxFiler(EKxFilerType_t eType)
{
    CheckKxApiInitialized();
    if (eType != KxFilerType_StillImage)
        throw INVALID_ARGUMENT_EXCEPTION("eType = %d is no kind of filer", static_cast<int>(eType));
    return GenICam::GuardBadAlloc([] { return new CKxStillImageFiler; });
}

} // namespace KxApi
