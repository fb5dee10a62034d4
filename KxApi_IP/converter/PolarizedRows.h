// SPDX-License-Identifier: Apache-2.0
// Stages for images from behind polarisers.
#pragma once

#include "RowSources.h"

#include <memory>
#include <vector>

namespace KxApi
{
namespace Detail
{

/// What is wanted of polarised light.
struct CPolarizationOptions
{
    EKxPolarizationImageTransformationMethod_t method;
    double angle;    ///< degrees
    bool isBilinear; ///< for the specified angle
    bool isDark;
    std::vector<uint32_t> circle; ///< 256 colours, for ADOLP
};

/// Bits of the values that a method makes of values of nBits.
unsigned PolarizationResultBits(EKxPolarizationImageTransformationMethod_t method, unsigned nBits);

/// Whether the colours of a Bayer mosaic are kept by the method.
bool KeepsColor(EKxPolarizationImageTransformationMethod_t method);

/// The value that a method makes of the four values of each pixel.
class CPolarizationValue
{
public:
    CPolarizationValue(const CPolarizationOptions& options, unsigned nBits);

    void Make(const uint16_t* const* apPolarizers, size_t nWidth, uint16_t* pResult) const;

private:
    EKxPolarizationImageTransformationMethod_t m_method;
    float m_cos;
    float m_sin;
    unsigned m_nMax;
};

/// The lines of a polarised mosaic, and the four values of its pixels or squares.
class CPolarizedLines
{
public:
    CPolarizedLines(const CSourceFormat& format, size_t nWidth);
    CPolarizedLines(const CPolarizedLines&) = delete;
    CPolarizedLines& operator=(const CPolarizedLines&) = delete;
    ~CPolarizedLines() = default;

    void Begin(const CSourceView& source);
    /// Four rows for each pixel of a line, times 4; they stay until the next call.
    const uint16_t* const* Bilinear(size_t nLine);
    /// Four rows for each square of a line of squares, times 4.
    const uint16_t* const* OfCells(size_t nLine);

    size_t GetWidth() const { return m_nWidth; }
    size_t GetHeight() const { return m_source.nHeight; }
    size_t GetCellWidth() const { return (m_nWidth + 1) / 2; }
    size_t GetCellHeight() const { return (m_source.nHeight + 1) / 2; }
    const CSourceFormat& GetFormat() const { return m_reader.GetFormat(); }

private:
    const uint16_t* Line(ptrdiff_t nLine);

    CLineReader m_reader;
    size_t m_nWidth;
    CSourceView m_source{};
    CRowRing<uint16_t> m_ring;
    CRowBuffer<uint16_t> m_rows;
    uint16_t* m_apRows[4];
};

/// The squares of a polarised mosaic as the pixels of one of half the size.
class CCellLines
{
public:
    CCellLines(const CSourceFormat& format, size_t nWidth, const CPolarizationOptions& options);

    void Begin(const CSourceView& source) { m_pLines->Begin(source); }
    void Make(size_t nLine, uint16_t* pRow) { m_value.Make(m_pLines->OfCells(nLine), GetWidth(), pRow); }
    size_t GetWidth() const { return m_pLines->GetCellWidth(); }
    size_t GetHeight() const { return m_pLines->GetCellHeight(); }
    unsigned GetBits() const { return m_nBits; }

private:
    // By pointer, as it holds pointers into itself and this object moves.
    std::unique_ptr<CPolarizedLines> m_pLines;
    CPolarizationValue m_value;
    unsigned m_nBits;
};

/// The rows of a polarised image; ADOLP aside. nWidth is that of the image.
std::unique_ptr<IRowSource<uint16_t>> MakePolarizedRows(const CSourceFormat& format, size_t nWidth,
                                                        const CPolarizationOptions& options,
                                                        EKxBayerInterpolationMethod_t bayer);
/// The colours of ADOLP, eight bits each.
std::unique_ptr<IRowSource<uint8_t>> MakePolarizationColorRows(const CSourceFormat& format, size_t nWidth,
                                                               const CPolarizationOptions& options);

} // namespace Detail
} // namespace KxApi
