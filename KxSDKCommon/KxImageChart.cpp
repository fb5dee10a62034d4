// SPDX-License-Identifier: Apache-2.0
#include "KxImageChart.h"

#include "PixelFormatInside.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr size_t kBitsOfLevels = 8; // the tables' values have as many; formats with more shift them up

struct CChartImage
{
    unsigned char* pBuffer;
    size_t nWidth;
    size_t nHeight;
    size_t nLinePitch;
    size_t nEffectiveBits;
    size_t nComponents;
};

CChartImage Open(IKxImage* pImage)
{
    if (!pImage || !pImage->GetImageBuffer())
        throw RUNTIME_EXCEPTION("There is no available image.");
    const IKxPixelFormatInfoInside* const pInfo = FormatInfo(pImage->GetImagePixelFormat());
    return {static_cast<unsigned char*>(pImage->GetImageBuffer()),
            pImage->GetImageWidth(),
            pImage->GetImageHeight(),
            pImage->GetImageLinePitch(),
            pInfo->GetEffectiveBits(),
            pInfo->GetComponentCount()};
}

// Grey steps and ramps.

constexpr int kBackground = 131;
constexpr std::array<int, 11> kSteps = {255, 234, 212, 190, 167, 143, 120, 94, 67, 37, 0};

/// Lines of the mono chart, each kind made once.
template <class T>
class CMonoLines
{
public:
    explicit CMonoLines(const CChartImage& image)
        : m_nWidth(image.nWidth)
        , m_nStepWidth(image.nWidth / 12)
        , m_nShift(image.nEffectiveBits - kBitsOfLevels)
        , m_nMax((size_t{1} << image.nEffectiveBits) - 1)
    {}

    std::vector<T> Background() const { return std::vector<T>(m_nWidth, Level(kBackground)); }

    std::vector<T> Steps(bool bReverse) const
    {
        return Band([this, bReverse](size_t i) {
            const size_t nStep = i / m_nStepWidth;
            return Level(kSteps[bReverse ? kSteps.size() - 1 - nStep : nStep]);
        });
    }

    std::vector<T> Ramp(bool bFalling) const
    {
        const size_t nLast = kSteps.size() * m_nStepWidth - 1;
        return Band([this, bFalling, nLast](size_t i) {
            return static_cast<T>(nLast == 0 ? 0 : (bFalling ? nLast - i : i) * m_nMax / nLast);
        });
    }

private:
    T Level(int nLevel) const { return static_cast<T>(nLevel << m_nShift); }

    /// Background with the band's pixels, valueAt(0) and on, behind the side margin.
    template <class ValueAt>
    std::vector<T> Band(ValueAt valueAt) const
    {
        std::vector<T> line = Background();
        T* const pBand = line.data() + m_nWidth / 24;
        for (size_t i = 0; i < kSteps.size() * m_nStepWidth; ++i)
            pBand[i] = valueAt(i);
        return line;
    }

    const size_t m_nWidth;
    const size_t m_nStepWidth;
    const size_t m_nShift;
    const size_t m_nMax;
};

template <class T>
void DrawMono(const CChartImage& image)
{
    const CMonoLines<T> lines(image);
    const std::vector<T> background = lines.Background();
    const std::vector<T> bands[] = {lines.Steps(false), lines.Ramp(false), lines.Ramp(true),
                                    lines.Steps(true)};
    const size_t nTop = image.nHeight / 10, nBand = image.nHeight / 5;
    for (size_t y = 0; y < image.nHeight; ++y) {
        const bool bInBands = y >= nTop && y < nTop + std::size(bands) * nBand;
        const std::vector<T>& line = bInBands ? bands[(y - nTop) / nBand] : background;
        std::memcpy(image.pBuffer + y * image.nLinePitch, line.data(), line.size() * sizeof(T));
    }
}

template <class T>
bool MakeChartMono(IKxImage* pImage, _EKxMemoryInitialization_t eInitialization)
{
    if (eInitialization != KxMemoryInitialization_Chart)
        return false;
    GenICam::GuardBadAlloc([pImage] { DrawMono<T>(Open(pImage)); });
    return true;
}

bool MakeChartMono8(IKxImage* pImage, _EKxMemoryInitialization_t eInitialization)
{
    return MakeChartMono<unsigned char>(pImage, eInitialization);
}

bool MakeChartMono16(IKxImage* pImage, _EKxMemoryInitialization_t eInitialization)
{
    return MakeChartMono<unsigned short>(pImage, eInitialization);
}

// Colour patches.

constexpr size_t kPatchRows = 4;
constexpr size_t kPatchColumns = 6;
constexpr size_t kColors = 3;

// R, G, B
constexpr unsigned char kPatches[kPatchRows][kPatchColumns][kColors] = {
    {{115, 82, 68}, {194, 150, 130}, {98, 122, 157}, {87, 108, 67}, {133, 128, 177}, {103, 189, 170}},
    {{214, 126, 44}, {80, 91, 166}, {193, 90, 99}, {94, 60, 108}, {157, 188, 64}, {224, 163, 46}},
    {{56, 61, 150}, {70, 148, 73}, {175, 54, 60}, {231, 199, 31}, {187, 86, 149}, {8, 133, 161}},
    {{243, 243, 242}, {200, 200, 200}, {160, 160, 160}, {122, 122, 121}, {85, 85, 85}, {52, 52, 52}},
};

/// Writes the pixels of one line, as far as the line goes: a chart may have wider elements than the image.
template <class T>
class CColorLine
{
public:
    CColorLine(const CChartImage& image, size_t y)
        : m_pNext(image.pBuffer + y * image.nLinePitch)
        , m_nElements(image.nLinePitch / sizeof(T))
        , m_nComponents(image.nComponents)
    {}

    void Clear(size_t nPixels)
    {
        const size_t nElements = std::min(nPixels * m_nComponents, m_nElements);
        std::memset(m_pNext, 0, nElements * sizeof(T));
        Advance(nElements);
    }

    /// Alpha keeps what it was.
    void Fill(const T (&color)[kColors], size_t nPixels)
    {
        for (; nPixels > 0; --nPixels) {
            std::memcpy(m_pNext, color, std::min(kColors, m_nElements) * sizeof(T));
            Advance(std::min(m_nComponents, m_nElements));
        }
    }

private:
    void Advance(size_t nElements)
    {
        m_pNext += nElements * sizeof(T);
        m_nElements -= nElements;
    }

    unsigned char* m_pNext; // lines need not start at a multiple of the element's size
    size_t m_nElements;     // left in the line
    const size_t m_nComponents;
};

template <class T>
void DrawPatchLine(const CChartImage& image, size_t y, const T (&colors)[kPatchColumns][kColors])
{
    const size_t nGap = image.nWidth / 77, nPatch = image.nWidth / 7;
    CColorLine<T> line(image, y);
    line.Clear(3 * nGap);
    for (const T(&color)[kColors] : colors) {
        line.Fill(color, nPatch);
        line.Clear(nGap);
    }
    line.Clear(image.nWidth - 3 * nGap - kPatchColumns * (nPatch + nGap));
}

template <class T>
bool MakeChartBGR(IKxImage* pImage, _EKxMemoryInitialization_t eInitialization, bool bRGBOrder)
{
    if (eInitialization != KxMemoryInitialization_Chart)
        return false;
    const CChartImage image = Open(pImage);
    const size_t nGap = image.nHeight / 45, nPatch = image.nHeight / 5;
    size_t y = 0;
    const auto clearLines = [&](size_t nLines) {
        for (; nLines > 0; --nLines)
            CColorLine<T>(image, y++).Clear(image.nWidth);
    };
    clearLines(3 * nGap);
    for (const auto& row : kPatches) {
        T colors[kPatchColumns][kColors];
        for (size_t nColumn = 0; nColumn < kPatchColumns; ++nColumn)
            for (size_t nColor = 0; nColor < kColors; ++nColor)
                colors[nColumn][bRGBOrder ? nColor : kColors - 1 - nColor] =
                    static_cast<T>(row[nColumn][nColor] << (image.nEffectiveBits - kBitsOfLevels));
        for (size_t i = 0; i < nPatch; ++i)
            DrawPatchLine(image, y++, colors);
        clearLines(nGap);
    }
    clearLines(image.nHeight - y);
    return true;
}

bool MakeChartBGR8(IKxImage* pImage, _EKxMemoryInitialization_t eInitialization)
{
    const auto ePixelFormat = pImage ? pImage->GetImagePixelFormat() : KxPixelFormat_None;
    const bool bRGBOrder = ePixelFormat == KxPixelFormat_RGB8 || ePixelFormat == KxPixelFormat_RGBa8;
    return MakeChartBGR<unsigned char>(pImage, eInitialization, bRGBOrder);
}

bool MakeChartBGR16(IKxImage* pImage, _EKxMemoryInitialization_t eInitialization)
{
    return MakeChartBGR<unsigned short>(pImage, eInitialization, false);
}

struct CChartEntry
{
    EKxPixelFormatNamingConvention_t ePixelFormat;
    ChartFunction pFunction;
};

// clang-format off
constexpr CChartEntry kCharts[] = {
    {KxPixelFormat_Mono8,  &MakeChartMono8},
    {KxPixelFormat_Mono10, &MakeChartMono16},
    {KxPixelFormat_Mono12, &MakeChartMono16},
    {KxPixelFormat_Mono14, &MakeChartMono16},
    {KxPixelFormat_Mono16, &MakeChartMono16},
    {KxPixelFormat_BGR8,   &MakeChartBGR8},
    {KxPixelFormat_BGRa8,  &MakeChartBGR8},
    {KxPixelFormat_BGR10,  &MakeChartBGR16},
    {KxPixelFormat_BGR12,  &MakeChartBGR16},
    {KxPixelFormat_BGR14,  &MakeChartBGR16},
    {KxPixelFormat_BGR16,  &MakeChartBGR16},
    {KxPixelFormat_BGRa10, &MakeChartBGR16},
    {KxPixelFormat_BGRa12, &MakeChartBGR16},
    {KxPixelFormat_BGRa14, &MakeChartBGR16},
    {KxPixelFormat_BGRa16, &MakeChartBGR16},
    // Known for its 16-bit elements in these 8-bit formats: what is seen is the left half of the chart, torn apart.
    {KxPixelFormat_RGB8,   &MakeChartBGR16},
    {KxPixelFormat_RGBa8,  &MakeChartBGR16},
};
// clang-format on

} // namespace

ChartFunction GetFunction(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    const auto* const pEntry =
        std::find_if(std::begin(kCharts), std::end(kCharts),
                     [ePixelFormat](const CChartEntry& entry) { return entry.ePixelFormat == ePixelFormat; });
    return pEntry == std::end(kCharts) ? nullptr : pEntry->pFunction;
}

} // namespace Detail
} // namespace KxApi
