// SPDX-License-Identifier: Apache-2.0
#include "PolarizedRows.h"

#include <algorithm>
#include <cmath>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr double kRadians = 3.14159265358979323846 / 180;

/// Each pixel and each line of another stage twice.
template <class T>
class CDoubledRows final : public IRowSource<T>
{
public:
    CDoubledRows(std::unique_ptr<IRowSource<T>> pCells, size_t nChannels, size_t nWidth)
        : m_pCells(std::move(pCells))
        , m_nChannels(nChannels)
        , m_nWidth(nWidth)
        , m_rows(kMaxChannels, nWidth + 1)
    {}

    void Begin(const CSourceView& source) override
    {
        m_pCells->Begin(source);
        m_nLine = SIZE_MAX;
    }

    void BeginLine(size_t nLine) override
    {
        if (nLine / 2 == m_nLine)
            return;
        m_nLine = nLine / 2;
        m_pCells->BeginLine(m_nLine);
        const size_t nCells = (m_nWidth + 1) / 2;
        for (size_t nFirst = 0; nFirst < nCells; nFirst += kPartWidth) {
            const size_t nCount = std::min(kPartWidth, nCells - nFirst);
            const CRow<T> cells = m_pCells->Get(nFirst, nCount);
            for (size_t k = 0; k < m_nChannels; ++k) {
                T* const pRow = m_rows.Row(k) + 2 * nFirst;
                for (size_t i = 0; i < 2 * nCount; ++i)
                    pRow[i] = cells[k][i / 2];
            }
        }
    }
    CRow<T> Get(size_t nFirst, size_t) override
    {
        return From<T>({m_rows.Row(0), m_rows.Row(1), m_rows.Row(2), nullptr}, nFirst);
    }

private:
    std::unique_ptr<IRowSource<T>> m_pCells;
    size_t m_nChannels;
    size_t m_nWidth;
    size_t m_nLine = SIZE_MAX;
    CRowBuffer<T> m_rows;
};

/// The mosaic sorted by polariser into four quarters.
class CFourViewsRows final : public IRowSource<uint16_t>
{
public:
    CFourViewsRows(const CSourceFormat& format, size_t nWidth)
        : m_reader(format, nWidth)
        , m_rows(2, nWidth)
    {}

    void Begin(const CSourceView& source) override { m_source = source; }

    void BeginLine(size_t nLine) override
    {
        const size_t nUpper = (m_source.nHeight + 1) / 2;
        uint16_t* const pLine = m_rows.Row(0);
        uint16_t* pResult = m_rows.Row(1);
        m_reader.Read(m_source, nLine < nUpper ? 2 * nLine : 2 * (nLine - nUpper) + 1, &pLine);
        for (size_t nFirst = 0; nFirst < 2; ++nFirst) {
            for (size_t x = nFirst; x < m_source.nWidth; x += 2)
                *pResult++ = pLine[x];
        }
    }
    CRow<uint16_t> Get(size_t nFirst, size_t) override { return {m_rows.Row(1) + nFirst}; }

private:
    CLineReader m_reader;
    CSourceView m_source{};
    CRowBuffer<uint16_t> m_rows;
};

/// One value a pixel, from the values around it.
class CBilinearValueRows final : public IRowSource<uint16_t>
{
public:
    CBilinearValueRows(const CSourceFormat& format, size_t nWidth, const CPolarizationOptions& options)
        : m_lines(format, nWidth)
        , m_value(options, format.nBits)
        , m_row(1, nWidth)
    {}

    void Begin(const CSourceView& source) override { m_lines.Begin(source); }

    void BeginLine(size_t nLine) override
    {
        m_value.Make(m_lines.Bilinear(nLine), m_lines.GetWidth(), m_row.Row(0));
    }
    CRow<uint16_t> Get(size_t nFirst, size_t) override { return {m_row.Row(0) + nFirst}; }

private:
    CPolarizedLines m_lines;
    CPolarizationValue m_value;
    CRowBuffer<uint16_t> m_row;
};

/// One value a square.
class CCellValueRows final : public IRowSource<uint16_t>
{
public:
    CCellValueRows(const CSourceFormat& format, size_t nWidth, const CPolarizationOptions& options)
        : m_lines(format, nWidth, options)
        , m_row(1, m_lines.GetWidth())
    {}

    void Begin(const CSourceView& source) override { m_lines.Begin(source); }

    void BeginLine(size_t nLine) override { m_lines.Make(nLine, m_row.Row(0)); }
    CRow<uint16_t> Get(size_t nFirst, size_t) override { return {m_row.Row(0) + nFirst}; }

private:
    CCellLines m_lines;
    CRowBuffer<uint16_t> m_row;
};

/// Colours of angle and degree, for each pixel or for each square.
class CPolarizationColorRows final : public IRowSource<uint8_t>
{
public:
    CPolarizationColorRows(const CSourceFormat& format, size_t nWidth, const CPolarizationOptions& options,
                           bool isOfCells)
        : m_lines(format, nWidth)
        , m_nWidth(isOfCells ? m_lines.GetCellWidth() : nWidth)
        , m_isOfCells(isOfCells)
        , m_isDark(options.isDark)
        , m_circle(options.circle)
        , m_values(2, m_nWidth)
        , m_colors(3, m_nWidth)
    {}

    void Begin(const CSourceView& source) override { m_lines.Begin(source); }

    void BeginLine(size_t nLine) override
    {
        const uint16_t* const* const apRows = m_isOfCells ? m_lines.OfCells(nLine) : m_lines.Bilinear(nLine);
        const CPolarizationRows rows{{apRows[0], apRows[1], apRows[2], apRows[3]}, m_nWidth, 0};
        PolarizationDegree(rows, m_values.Row(0));
        PolarizationAngle(rows, m_values.Row(1));
        uint8_t* const apColors[] = {m_colors.Row(0), m_colors.Row(1), m_colors.Row(2)};
        PolarizationColor(m_values.Row(0), m_values.Row(1), m_nWidth, m_circle.data(), m_isDark, apColors);
    }
    CRow<uint8_t> Get(size_t nFirst, size_t) override
    {
        return From<uint8_t>({m_colors.Row(0), m_colors.Row(1), m_colors.Row(2), nullptr}, nFirst);
    }

private:
    CPolarizedLines m_lines;
    size_t m_nWidth;
    bool m_isOfCells;
    bool m_isDark;
    std::vector<uint32_t> m_circle;
    CRowBuffer<uint16_t> m_values;
    CRowBuffer<uint8_t> m_colors;
};

} // namespace

unsigned PolarizationResultBits(EKxPolarizationImageTransformationMethod_t method, unsigned nBits)
{
    switch (method) {
    case KxPolarizationImageTransformationMethod_DoLP:
    case KxPolarizationImageTransformationMethod_AoLP:
        return 16;
    case KxPolarizationImageTransformationMethod_ADOLP:
        return 8;
    default:
        return nBits;
    }
}

bool KeepsColor(EKxPolarizationImageTransformationMethod_t method)
{
    switch (method) {
    case KxPolarizationImageTransformationMethod_Intensity:
    case KxPolarizationImageTransformationMethod_SpecifiedAngle:
    case KxPolarizationImageTransformationMethod_Angle0:
    case KxPolarizationImageTransformationMethod_Angle45:
    case KxPolarizationImageTransformationMethod_Angle90:
    case KxPolarizationImageTransformationMethod_Angle135:
        return true;
    default:
        return false;
    }
}

CPolarizationValue::CPolarizationValue(const CPolarizationOptions& options, unsigned nBits)
    : m_method(options.method)
    , m_cos(static_cast<float>(std::cos(2 * options.angle * kRadians)))
    , m_sin(static_cast<float>(std::sin(2 * options.angle * kRadians)))
    , m_nMax((1U << nBits) - 1)
{}

void CPolarizationValue::Make(const uint16_t* const* apPolarizers, size_t nWidth, uint16_t* pResult) const
{
    const CPolarizationRows rows{
        {apPolarizers[0], apPolarizers[1], apPolarizers[2], apPolarizers[3]}, nWidth, m_nMax};
    switch (m_method) {
    case KxPolarizationImageTransformationMethod_SpecifiedAngle:
        PolarizationAtAngle(rows, m_cos, m_sin, pResult);
        break;
    case KxPolarizationImageTransformationMethod_Angle0:
        PolarizationView(rows, 0, pResult);
        break;
    case KxPolarizationImageTransformationMethod_Angle45:
        PolarizationView(rows, 1, pResult);
        break;
    case KxPolarizationImageTransformationMethod_Angle90:
        PolarizationView(rows, 2, pResult);
        break;
    case KxPolarizationImageTransformationMethod_Angle135:
        PolarizationView(rows, 3, pResult);
        break;
    case KxPolarizationImageTransformationMethod_DoLP:
        PolarizationDegree(rows, pResult);
        break;
    case KxPolarizationImageTransformationMethod_AoLP:
        PolarizationAngle(rows, pResult);
        break;
    default:
        PolarizationIntensity(rows, pResult);
        break;
    }
}

CPolarizedLines::CPolarizedLines(const CSourceFormat& format, size_t nWidth)
    : m_reader(format, nWidth)
    , m_nWidth(nWidth)
    , m_ring(nWidth)
    , m_rows(4, nWidth)
    , m_apRows{m_rows.Row(0), m_rows.Row(1), m_rows.Row(2), m_rows.Row(3)}
{}

void CPolarizedLines::Begin(const CSourceView& source)
{
    m_source = source;
    m_ring.Clear();
}

const uint16_t* CPolarizedLines::Line(ptrdiff_t nLine)
{
    return m_ring.Get(nLine, m_source.nHeight,
                      [this](size_t nInside, uint16_t* pRow) { m_reader.Read(m_source, nInside, &pRow); });
}

const uint16_t* const* CPolarizedLines::Bilinear(size_t nLine)
{
    const auto nMiddle = static_cast<ptrdiff_t>(nLine);
    const uint16_t* const apLines[] = {nullptr, Line(nMiddle - 1), Line(nMiddle), Line(nMiddle + 1)};
    PolarizersBilinear(apLines, nLine % 2 == 1, GetFormat().anPolarizer, m_nWidth, m_apRows);
    return m_apRows;
}

const uint16_t* const* CPolarizedLines::OfCells(size_t nLine)
{
    const auto nUpper = static_cast<ptrdiff_t>(2 * nLine);
    PolarizersOfCells(Line(nUpper), Line(nUpper + 1), GetFormat().anPolarizer, GetCellWidth(), m_apRows);
    return m_apRows;
}

CCellLines::CCellLines(const CSourceFormat& format, size_t nWidth, const CPolarizationOptions& options)
    : m_pLines(std::make_unique<CPolarizedLines>(format, nWidth))
    , m_value(options, format.nBits)
    , m_nBits(PolarizationResultBits(options.method, format.nBits))
{}

std::unique_ptr<IRowSource<uint16_t>> MakePolarizedRows(const CSourceFormat& format, size_t nWidth,
                                                        const CPolarizationOptions& options,
                                                        EKxBayerInterpolationMethod_t bayer)
{
    if (options.method == KxPolarizationImageTransformationMethod_Off)
        return std::make_unique<CPlainRows<uint16_t>>(format, nWidth);
    if (options.method == KxPolarizationImageTransformationMethod_FourViews)
        return std::make_unique<CFourViewsRows>(format, nWidth);
    if (format.family == EFamily::Bayer && KeepsColor(options.method)) {
        auto pColors = std::make_unique<CBayerRows<uint16_t, CCellLines>>(
            CCellLines(format, nWidth, options), CBayerPattern{format.nRedX, format.nRedY}, bayer);
        const bool isGrey =
            bayer == KxBayerInterpolationMethod_Off || bayer == KxBayerInterpolationMethod_Mono;
        return std::make_unique<CDoubledRows<uint16_t>>(std::move(pColors), isGrey ? 1 : 3, nWidth);
    }
    const bool isOfCells =
        format.family == EFamily::Bayer ||
        (options.method == KxPolarizationImageTransformationMethod_SpecifiedAngle && !options.isBilinear);
    if (!isOfCells)
        return std::make_unique<CBilinearValueRows>(format, nWidth, options);
    return std::make_unique<CDoubledRows<uint16_t>>(std::make_unique<CCellValueRows>(format, nWidth, options),
                                                    1, nWidth);
}

std::unique_ptr<IRowSource<uint8_t>> MakePolarizationColorRows(const CSourceFormat& format, size_t nWidth,
                                                               const CPolarizationOptions& options)
{
    const bool isOfCells = format.family == EFamily::Bayer;
    auto pColors = std::make_unique<CPolarizationColorRows>(format, nWidth, options, isOfCells);
    if (!isOfCells)
        return pColors;
    return std::make_unique<CDoubledRows<uint8_t>>(std::move(pColors), 3, nWidth);
}

} // namespace Detail
} // namespace KxApi
