// SPDX-License-Identifier: Apache-2.0

#include "GraphSource.h"

#include <Base/GCBadAlloc.h>
#include <KxApi_IP/KxImageGraph.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

namespace KxApi
{
namespace
{

using namespace Detail;

constexpr uint32_t kMaxAverage = 1000;

struct CPoint
{
    double x;
    double y;
};

/// Pixels of one place in the mosaic: every `step`-th from `x`, `y` on.
struct CLattice
{
    size_t x;
    size_t y;
    size_t step;
    size_t columns;
    size_t rows;
};

/// One direction of a position on a lattice.
struct CLatticeSpan
{
    size_t first;
    size_t second;
    double share; ///< of the second
};

CLatticeSpan SpanOf(double position, size_t offset, size_t step, size_t count)
{
    const double last = static_cast<double>(count - 1);
    const double at =
        std::clamp((position - static_cast<double>(offset)) / static_cast<double>(step), 0.0, last);
    const double floor = std::floor(at);
    const auto first = static_cast<size_t>(floor);
    return {first, std::min(first + 1, count - 1), at - floor};
}

/// All pixels of one type of components.
class CComponentField
{
public:
    CComponentField(const CImageValues& values, size_t k)
        : m_values(values)
        , m_k(k)
        , m_signBit(SignBit(values.Format().components[k]))
    {}

    void Add(const CLattice& lattice) { m_lattices.push_back(lattice); }
    unsigned Bits() const { return m_values.Format().components[m_k].bits; }

    /// The value of the nearest pixel; of several, that of the first in the mosaic.
    double Nearest(const CPoint& point) const
    {
        double best = 0;
        double bestDistance = -1;
        for (const CLattice& lattice : m_lattices) {
            const CLatticeSpan x = SpanOf(point.x, lattice.x, lattice.step, lattice.columns);
            const CLatticeSpan y = SpanOf(point.y, lattice.y, lattice.step, lattice.rows);
            const size_t column = x.share < 0.5 ? x.first : x.second;
            const size_t row = y.share < 0.5 ? y.first : y.second;
            const double distance = std::hypot(point.x - Position(column, lattice.x, lattice.step),
                                               point.y - Position(row, lattice.y, lattice.step));
            if (bestDistance >= 0 && distance >= bestDistance)
                continue;
            bestDistance = distance;
            best = Value(lattice, column, row);
        }
        return best;
    }

    /// Between the four pixels around; the mean over the places in the mosaic.
    double Bilinear(const CPoint& point) const
    {
        double sum = 0;
        for (const CLattice& lattice : m_lattices) {
            const CLatticeSpan x = SpanOf(point.x, lattice.x, lattice.step, lattice.columns);
            const CLatticeSpan y = SpanOf(point.y, lattice.y, lattice.step, lattice.rows);
            const auto inRow = [&](size_t row) {
                return Value(lattice, x.first, row) * (1 - x.share) + Value(lattice, x.second, row) * x.share;
            };
            sum += inRow(y.first) * (1 - y.share) + inRow(y.second) * y.share;
        }
        return sum / static_cast<double>(m_lattices.size());
    }

private:
    static double Position(size_t index, size_t offset, size_t step)
    {
        return static_cast<double>(offset + index * step);
    }
    double Value(const CLattice& lattice, size_t column, size_t row) const
    {
        const uint64_t bits =
            m_values.Bits(m_k, lattice.x + column * lattice.step, lattice.y + row * lattice.step);
        return static_cast<double>(static_cast<uint32_t>(bits) ^ m_signBit);
    }

    const CImageValues& m_values;
    const size_t m_k;
    const uint32_t m_signBit;
    std::vector<CLattice> m_lattices;
};

using CFields = std::map<EKxPixelComponentType_t, CComponentField>;

CFields FieldsOf(const CImageValues& values)
{
    CFields fields;
    for (size_t k = 0; k < values.ComponentCount(); ++k) {
        const size_t step = PeriodOf(values.Format(), k);
        for (size_t y = 0; y < std::min(step, values.Height()); ++y) {
            for (size_t x = 0; x < std::min(step, values.Width()); ++x) {
                const auto found =
                    fields.try_emplace(ComponentType(values.Format(), k, x, y), values, k).first;
                found->second.Add({x, y, step, (values.Width() - x + step - 1) / step,
                                   (values.Height() - y + step - 1) / step});
            }
        }
    }
    return fields;
}

/// Where the samples of a profile lie.
class CSampler
{
public:
    CSampler(const CKxProfileLine& line, size_t width, size_t height)
        : m_line(line)
        , m_width(static_cast<double>(width))
        , m_height(static_cast<double>(height))
        , m_length(std::hypot(line.dX1 - line.dX0, line.dY1 - line.dY0))
    {}

    size_t Count() const { return static_cast<size_t>(std::llround(m_length)) + 1; }

    /// Mean of the field around sample i.
    double Sample(const CComponentField& field, size_t i) const
    {
        const double share = Count() > 1 ? static_cast<double>(i) / static_cast<double>(Count() - 1) : 0;
        const CPoint centre{m_line.dX0 + share * (m_line.dX1 - m_line.dX0),
                            m_line.dY0 + share * (m_line.dY1 - m_line.dY0)};
        // A point has no direction; it is averaged as a level line is.
        const CPoint across =
            m_length > 0 ? CPoint{(m_line.dY0 - m_line.dY1) / m_length, (m_line.dX1 - m_line.dX0) / m_length}
                         : CPoint{0, 1};
        double sum = 0;
        unsigned count = 0;
        for (uint32_t j = 0; j < m_line.nAverage; ++j) {
            const double offset = j - (m_line.nAverage - 1) / 2.0;
            const CPoint point{centre.x + offset * across.x, centre.y + offset * across.y};
            if (m_line.nAverage > 1 && !IsInside(point))
                continue;
            sum += m_line.eInterpolation == KxProfileInterpolation_Bilinear ? field.Bilinear(point)
                                                                            : field.Nearest(point);
            ++count;
        }
        // Of an even number none lies on the line itself, and in a corner all can be outside.
        return count > 0 ? sum / count : field.Nearest(centre);
    }

private:
    bool IsInside(const CPoint& point) const
    {
        return point.x >= -0.5 && point.x <= m_width - 0.5 && point.y >= -0.5 && point.y <= m_height - 0.5;
    }

    const CKxProfileLine& m_line;
    const double m_width;
    const double m_height;
    const double m_length;
};

void CheckPosition(const char* szName, double dValue, size_t nSize)
{
    const double dMax = static_cast<double>(nSize) - 1;
    if (!(dValue >= 0 && dValue <= dMax))
        throw OUT_OF_RANGE_EXCEPTION("%s = %f must be in the image, from 0 to %f", szName, dValue, dMax);
}

void CheckLine(const CKxProfileLine& line, const CImageValues& values)
{
    CheckPosition("dX0", line.dX0, values.Width());
    CheckPosition("dY0", line.dY0, values.Height());
    CheckPosition("dX1", line.dX1, values.Width());
    CheckPosition("dY1", line.dY1, values.Height());
    if (line.nAverage < 1 || line.nAverage > kMaxAverage)
        throw OUT_OF_RANGE_EXCEPTION("nAverage = %u must be from 1 to %u", line.nAverage, kMaxAverage);
    if (line.eInterpolation != KxProfileInterpolation_Nearest &&
        line.eInterpolation != KxProfileInterpolation_Bilinear)
        throw INVALID_ARGUMENT_EXCEPTION("eInterpolation = %d is no kind of interpolation",
                                         static_cast<int>(line.eInterpolation));
}

EKxGraphDataKind_t KindOf(const CKxProfileLine& line)
{
    if (line.nAverage > 1)
        return KxGraphDataKind_AveragedProfile;
    return line.eInterpolation == KxProfileInterpolation_Bilinear ? KxGraphDataKind_InterpolatedProfile
                                                                  : KxGraphDataKind_LineProfile;
}

uint32_t DivisorOf(EKxGraphDataKind_t eKind, unsigned bits)
{
    if (eKind == KxGraphDataKind_LineProfile)
        return 1;
    return uint32_t{1} << (bits <= 16 ? 16 : 32 - bits);
}

} // namespace

void AppendLineProfile(const IKxImage* pImage, const CKxProfileLine& objLine,
                       IKxGraphDataBufferListResizable* pList)
{
    const CImageValues values(pImage);
    CheckGraphSource(values, pList);
    CheckLine(objLine, values);
    GenICam::GuardBadAlloc([&] {
        const CSampler sampler(objLine, values.Width(), values.Height());
        for (const auto& [type, field] : FieldsOf(values)) {
            CKxGraphDataDescription description;
            description.eKind = KindOf(objLine);
            description.eComponent = type;
            description.nDivisor = DivisorOf(description.eKind, field.Bits());
            description.nFullScale =
                static_cast<uint32_t>(((uint64_t{1} << field.Bits()) - 1) * description.nDivisor);
            uint32_t* const pValues = pList->Append(description, sampler.Count());
            for (size_t i = 0; i < sampler.Count(); ++i)
                pValues[i] =
                    static_cast<uint32_t>(std::llround(sampler.Sample(field, i) * description.nDivisor));
        }
    });
}

} // namespace KxApi
