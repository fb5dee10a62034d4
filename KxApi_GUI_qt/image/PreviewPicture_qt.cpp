// SPDX-License-Identifier: Apache-2.0
#include "image/PreviewPicture_qt.h"

#include <KxApi_TL/IKxImage.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

namespace KxApi
{
namespace
{

/// How the bytes of an image become a picture.
enum class EUse : uint8_t
{
    Wrap,     ///< shared as they are
    WrapSwap, ///< shared, with red and blue in each other's place
    Shift,    ///< 16-bit values, copied with their upper bits
};

struct CShownFormat
{
    EKxPixelFormatNamingConvention_t ePixelFormat;
    QImage::Format eFormat;
    EUse eUse;
    int nShift;
};

// clang-format off
constexpr CShownFormat kShownFormats[] = {
    {KxPixelFormat_Mono8,    QImage::Format_Grayscale8, EUse::Wrap,     0},
    {KxPixelFormat_Mono10,   QImage::Format_Grayscale8, EUse::Shift,    2},
    {KxPixelFormat_Mono12,   QImage::Format_Grayscale8, EUse::Shift,    4},
    {KxPixelFormat_Mono14,   QImage::Format_Grayscale8, EUse::Shift,    6},
    {KxPixelFormat_Mono16,   QImage::Format_Grayscale8, EUse::Shift,    8},
    {KxPixelFormat_RGB8,     QImage::Format_RGB888,     EUse::Wrap,     0},
    {KxPixelFormat_BGR8,     QImage::Format_BGR888,     EUse::Wrap,     0},
    {KxPixelFormat_RGBa8,    QImage::Format_RGBX8888,   EUse::Wrap,     0},
    {KxPixelFormat_BGRa8,    QImage::Format_RGBX8888,   EUse::WrapSwap, 0},
    {KxPixelFormat_RGB10p32, QImage::Format_BGR30,      EUse::Wrap,     0},
    {KxPixelFormat_BGR10p32, QImage::Format_BGR30,      EUse::WrapSwap, 0},
};
// clang-format on

const CShownFormat* FindShownFormat(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    const auto* const pFound = std::find_if(
        std::begin(kShownFormats), std::end(kShownFormats),
        [ePixelFormat](const CShownFormat& format) { return format.ePixelFormat == ePixelFormat; });
    return pFound == std::end(kShownFormats) ? nullptr : pFound;
}

/// Whether QImage can count so many pixels of up to four bytes in one line.
bool FitsPicture(const IKxImage& image)
{
    constexpr size_t kMax = std::numeric_limits<int>::max() / 32;
    return image.GetImageWidth() <= kMax && image.GetImageHeight() <= kMax &&
           image.GetImageLinePitch() <= static_cast<size_t>(std::numeric_limits<int>::max());
}

/// Shares the image's memory. As read-only: what changes the picture then copies it, and the image stays what
/// it is.
QImage Wrapped(const IKxImage& image, QImage::Format eFormat)
{
    return QImage(static_cast<const uchar*>(image.GetImageBuffer()), static_cast<int>(image.GetImageWidth()),
                  static_cast<int>(image.GetImageHeight()), static_cast<int>(image.GetImageLinePitch()),
                  eFormat);
}

/// The same with a table of colours; of read-only memory, QImage would make a copy to set one.
QImage WrappedWithTable(const IKxImage& image, const QVector<QRgb>& vecTable)
{
    QImage picture(static_cast<uchar*>(image.GetImageBuffer()), static_cast<int>(image.GetImageWidth()),
                   static_cast<int>(image.GetImageHeight()), static_cast<int>(image.GetImageLinePitch()),
                   QImage::Format_Indexed8);
    picture.setColorTable(vecTable);
    return picture;
}

/// One row of values follows the other on both sides, without regard to what fills the lines: rows of a width
/// that isn't a multiple of four therefore come out shifted against each other, which users of these formats
/// know.
QImage Shifted(const IKxImage& image, int nShift)
{
    const auto nWidth = static_cast<int>(image.GetImageWidth());
    const auto nHeight = static_cast<int>(image.GetImageHeight());
    QImage picture(nWidth, nHeight, QImage::Format_Grayscale8);
    if (picture.isNull())
        return picture;
    const auto* const pSource = static_cast<const uint16_t*>(image.GetImageBuffer());
    uchar* const pTarget = picture.bits();
    const size_t nPixels = image.GetImageWidth() * image.GetImageHeight();
    for (size_t i = 0; i < nPixels; ++i)
        pTarget[i] = static_cast<uchar>(pSource[i] >> nShift);
    std::memset(pTarget + nPixels, 0, static_cast<size_t>(picture.sizeInBytes()) - nPixels);
    return picture;
}

} // namespace

CPreviewPicture CPreviewPictureMaker::Make(const IKxImage& image, const CColorMapSettings& objColorMap)
{
    const CShownFormat* const pShown = FindShownFormat(image.GetImagePixelFormat());
    if (!pShown || !image.GetImageBuffer() || !FitsPicture(image))
        return {};
    switch (pShown->eUse) {
    case EUse::Shift:
        return {Shifted(image, pShown->nShift)};
    case EUse::WrapSwap:
        return {Wrapped(image, pShown->eFormat), true};
    case EUse::Wrap:
        break;
    }
    if (pShown->ePixelFormat != KxPixelFormat_Mono8 || objColorMap == CColorMapSettings())
        return {Wrapped(image, pShown->eFormat)};
    return {WrappedWithTable(image, ColorTable(objColorMap))};
}

const QVector<QRgb>& CPreviewPictureMaker::ColorTable(const CColorMapSettings& objColorMap)
{
    constexpr int kEntries = 256;
    constexpr QRgb kOpaque = 0xFF000000;
    if (m_vecColorTable.size() != kEntries || m_objTableSettings != objColorMap) {
        QVector<QRgb> vecTable(kEntries);
        SetColorMap(vecTable.data(), objColorMap.eType, objColorMap.bInversion, objColorMap.nPhase);
        for (QRgb& nColor : vecTable)
            nColor |= kOpaque;
        m_vecColorTable.swap(vecTable);
        m_objTableSettings = objColorMap;
    }
    return m_vecColorTable;
}

} // namespace KxApi
