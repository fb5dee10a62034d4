// SPDX-License-Identifier: Apache-2.0
#include "image/ScaledPainting_qt.h"

#include "image/PreviewPicture_qt.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QRegion>
#include <QTransform>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace KxApi
{
namespace
{

// The raster engine's own: it walks along a line in steps of 1/65536 of a source pixel, and begins anew after
// so many pixels. Sums of rounded steps decide which pixel is taken, so these are part of the look.
constexpr double kFixedScale = 65536;
constexpr int kRunLength = 2048;
/// Between these limits it does so.
constexpr int kMaxSource = 32767;
constexpr double kMinStep = 1.0 / 256;
constexpr double kMaxStep = 100;
constexpr double kMaxOffset = 1e4;

/// Lines that are painted at a time: few enough to stay in the cache.
constexpr int kBandLines = 8;

constexpr QRgb kOpaque = 0xFF000000;

/// One axis of the way from device to source.
struct CAxis
{
    double dStep;
    double dOffset;
    int nLast; // of the source

    bool IsInRange() const
    {
        return dStep > kMinStep && dStep < kMaxStep && std::fabs(dOffset) < kMaxOffset && nLast < kMaxSource;
    }
    int First(int nDevice) const
    {
        return static_cast<int>((dStep * (nDevice + 0.5) + dOffset) * kFixedScale);
    }
    int Clamped(int nFixed) const { return std::clamp(nFixed >> 16, 0, nLast); }

    int SourceLine(int nDevice) const { return Clamped(First(nDevice)); }

    /// Where the source pixels of a run of device pixels lie in their line.
    void SourceOffsets(int nFirstDevice, int nPixelSize, std::vector<int>& vecOffsets) const
    {
        const int nStep = static_cast<int>(dStep * kFixedScale);
        int nFixed = 0;
        for (size_t i = 0; i < vecOffsets.size(); ++i, nFixed += nStep) {
            if (i % kRunLength == 0)
                nFixed = First(nFirstDevice + static_cast<int>(i));
            vecOffsets[i] = Clamped(nFixed) * nPixelSize;
        }
    }
};

struct CSource
{
    const uchar* pLine;
    const uchar* pNextLine; ///< to be sampled soon
    const QRgb* pTable;     ///< of Indexed8
    bool bLastLine;         ///< nothing may be read behind it
};

using Sampler = void (*)(const CSource& source, const int* pOffsets, int nPixels, QRgb* pTarget);

template <class Load>
void Sample(const CSource& source, const int* pOffsets, int nPixels, QRgb* pTarget, Load load)
{
    // The memory is what takes the time, which doesn't foresee that lines are left out. Two pixels at a time,
    // since stores come next.
    constexpr int kBlock = 16;
    int i = 0;
    for (; i + kBlock <= nPixels; i += kBlock) {
        __builtin_prefetch(source.pNextLine + pOffsets[i]);
        for (int k = i; k < i + kBlock; k += 2) {
            const uint64_t nTwo = load(pOffsets[k]) | (static_cast<uint64_t>(load(pOffsets[k + 1])) << 32);
            std::memcpy(pTarget + k, &nTwo, sizeof(nTwo));
        }
    }
    for (; i < nPixels; ++i)
        pTarget[i] = static_cast<QRgb>(load(pOffsets[i]));
}

void SampleGrey(const CSource& source, const int* pOffsets, int nPixels, QRgb* pTarget)
{
    Sample(source, pOffsets, nPixels, pTarget,
           [p = source.pLine](int nOffset) { return kOpaque | (p[nOffset] * 0x010101U); });
}

void SampleTable(const CSource& source, const int* pOffsets, int nPixels, QRgb* pTarget)
{
    Sample(source, pOffsets, nPixels, pTarget,
           [p = source.pLine, pTable = source.pTable](int nOffset) { return pTable[p[nOffset]]; });
}

uint32_t LoadFour(const uchar* p)
{
    uint32_t nValue;
    std::memcpy(&nValue, p, sizeof(nValue));
    return nValue;
}

QRgb FromBgr(uint32_t nValue) { return kOpaque | nValue; }
QRgb FromRgb(uint32_t nValue) { return kOpaque | (__builtin_bswap32(nValue) >> 8); }

template <QRgb (*from)(uint32_t)>
void SampleThreeBytes(const CSource& source, const int* pOffsets, int nPixels, QRgb* pTarget)
{
    const uchar* const p = source.pLine;
    if (source.bLastLine)
        Sample(source, pOffsets, nPixels, pTarget, [p](int nOffset) {
            const uchar* const pPixel = p + nOffset;
            return from(static_cast<uint32_t>(pPixel[0] | (pPixel[1] << 8) | (pPixel[2] << 16)));
        });
    else
        Sample(source, pOffsets, nPixels, pTarget, [p](int nOffset) { return from(LoadFour(p + nOffset)); });
}

template <QRgb (*from)(uint32_t)>
void SampleFourBytes(const CSource& source, const int* pOffsets, int nPixels, QRgb* pTarget)
{
    Sample(source, pOffsets, nPixels, pTarget,
           [p = source.pLine](int nOffset) { return from(LoadFour(p + nOffset)); });
}

Sampler SamplerOf(const CPreviewPicture& picture)
{
    if constexpr (Q_BYTE_ORDER != Q_LITTLE_ENDIAN)
        return nullptr;
    switch (picture.image.format()) {
    case QImage::Format_Grayscale8:
        return &SampleGrey;
    case QImage::Format_Indexed8:
        return picture.image.colorCount() == 256 ? &SampleTable : nullptr;
    case QImage::Format_RGB888:
        return &SampleThreeBytes<&FromRgb>;
    case QImage::Format_BGR888:
        return &SampleThreeBytes<&FromBgr>;
    case QImage::Format_RGBX8888:
        return picture.bSwapped ? &SampleFourBytes<&FromBgr> : &SampleFourBytes<&FromRgb>;
    default:
        return nullptr;
    }
}

/// Paints the pixels of one rectangle of the device.
class CBandPainter
{
public:
    CBandPainter(QPainter& painter, const CPreviewPicture& picture, Sampler sample, CAxis axisX, CAxis axisY)
        : m_painter(painter)
        , m_image(picture.image)
        , m_vecTable(picture.image.colorTable())
        , m_sample(sample)
        , m_axisX(axisX)
        , m_axisY(axisY)
    {}

    /// @param ptDevice how far the painter's coordinates lie from the device's.
    void Paint(const QRect& rc, const QPoint& ptDevice)
    {
        m_vecOffsets.resize(static_cast<size_t>(rc.width()));
        m_axisX.SourceOffsets(rc.left() + ptDevice.x(), m_image.depth() / 8, m_vecOffsets);
        QImage band(rc.width(), std::min(kBandLines, rc.height()), QImage::Format_RGB32);
        if (band.isNull())
            return;
        for (int y = rc.top(); y <= rc.bottom(); y += band.height()) {
            const int nLines = std::min(band.height(), rc.bottom() + 1 - y);
            FillBand(band, y + ptDevice.y(), nLines);
            m_painter.drawImage(QPoint(rc.left(), y), band, QRect(0, 0, band.width(), nLines));
        }
    }

private:
    void FillBand(QImage& band, int nFirstDevice, int nLines)
    {
        const auto nStride = band.bytesPerLine();
        uchar* pTarget = band.bits();
        int nLineBefore = -1;
        for (int i = 0; i < nLines; ++i, pTarget += nStride) {
            const int nLine = m_axisY.SourceLine(nFirstDevice + i);
            if (nLine == nLineBefore) {
                std::memcpy(pTarget, pTarget - nStride, static_cast<size_t>(nStride));
                continue;
            }
            nLineBefore = nLine;
            m_sample({m_image.constScanLine(nLine),
                      m_image.constScanLine(m_axisY.SourceLine(nFirstDevice + i + 1)), m_vecTable.constData(),
                      nLine == m_image.height() - 1},
                     m_vecOffsets.data(), band.width(), reinterpret_cast<QRgb*>(pTarget));
        }
    }

    QPainter& m_painter;
    const QImage& m_image;
    const QVector<QRgb> m_vecTable;
    const Sampler m_sample;
    const CAxis m_axisX;
    const CAxis m_axisY;
    std::vector<int> m_vecOffsets;
};

/// Whether what is painted lands in the device as it is.
bool IsPlain(const QPainter& painter)
{
    const QPaintEngine* const pEngine = painter.paintEngine();
    const QTransform& transform = painter.deviceTransform();
    return pEngine && pEngine->type() == QPaintEngine::Raster &&
           transform.type() <= QTransform::TxTranslate && transform.dx() == std::floor(transform.dx()) &&
           transform.dy() == std::floor(transform.dy()) &&
           !(painter.renderHints() & (QPainter::SmoothPixmapTransform | QPainter::Antialiasing));
}

} // namespace

void DrawScaled(QPainter& painter, const QRect& rcTarget, const CPreviewPicture& picture,
                const QRegion& rgShown)
{
    const QRegion rgPainted = rgShown & rcTarget;
    if (rgPainted.isEmpty() || picture.image.isNull())
        return;
    const QTransform& device = painter.deviceTransform();
    QTransform stretch = device;
    stretch.translate(rcTarget.x(), rcTarget.y());
    stretch.scale(static_cast<double>(rcTarget.width()) / picture.image.width(),
                  static_cast<double>(rcTarget.height()) / picture.image.height());
    // As the raster engine has it, so that places between two pixels go to the same one.
    const QTransform source =
        (QTransform::fromTranslate(1 / kFixedScale, 1 / kFixedScale) * stretch).inverted();
    const CAxis axisX{source.m11(), source.dx(), picture.image.width() - 1};
    const CAxis axisY{source.m22(), source.dy(), picture.image.height() - 1};
    const Sampler sample = SamplerOf(picture);
    if (!sample || !IsPlain(painter) || !axisX.IsInRange() || !axisY.IsInRange()) {
        painter.drawImage(rcTarget, picture.Complete());
        return;
    }
    CBandPainter bandPainter(painter, picture, sample, axisX, axisY);
    const QPoint ptDevice(static_cast<int>(device.dx()), static_cast<int>(device.dy()));
    for (const QRect& rc : rgPainted)
        bandPainter.Paint(rc, ptDevice);
}

} // namespace KxApi
