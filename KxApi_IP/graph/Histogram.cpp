// SPDX-License-Identifier: Apache-2.0

#include "GraphSource.h"

#include <Base/GCBadAlloc.h>
#include <KxApi_IP/KxImageGraph.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <map>
#include <numeric>
#include <utility>
#include <vector>

namespace KxApi
{
namespace
{

using namespace Detail;

constexpr size_t kLanes = 4;
constexpr unsigned kMaxBits = 16; // of an entry's number

using CCounts = std::vector<uint32_t>;
using CLaneTables = std::array<uint32_t*, kLanes>;

/// The values of a word, written out one by one, since a loop over them costs as much as the counting.
template <class T, size_t... kIndices>
void CountWord(uint64_t word, uint32_t mask, const CLaneTables& tables, std::index_sequence<kIndices...>)
{
    (++tables[kIndices % kLanes][static_cast<T>(word >> (8 * sizeof(T) * kIndices)) & mask], ...);
}

template <class T, size_t... kIndices>
void CountStep(const T* line, size_t step, uint32_t mask, const CLaneTables& tables,
               std::index_sequence<kIndices...>)
{
    (++tables[kIndices][line[kIndices * step] & mask], ...);
}

/// Counts values `step` apart, the i-th into the table of lane i % 4. Equal values that follow each other are
/// common; each increment would wait for the one before if they shared a table.
template <class T>
void CountLine(const T* line, size_t step, size_t count, uint32_t mask, const CLaneTables& tables)
{
    size_t i = 0;
    if (step != 1) {
        for (; i + kLanes <= count; i += kLanes, line += kLanes * step)
            CountStep(line, step, mask, tables, std::make_index_sequence<kLanes>());
        for (; i < count; ++i, line += step)
            ++tables[i % kLanes][*line & mask];
        return;
    }
    constexpr size_t kPerWord = sizeof(uint64_t) / sizeof(T);
    static_assert(kPerWord % kLanes == 0);
    for (; i + kPerWord <= count; i += kPerWord) {
        uint64_t word; // NOLINT(cppcoreguidelines-init-variables)
        std::memcpy(&word, line + i, sizeof word);
        CountWord<T>(word, mask, tables, std::make_index_sequence<kPerWord>());
    }
    for (; i < count; ++i)
        ++tables[i % kLanes][line[i] & mask];
}

/// Counts one component of a part of an image.
class CComponentCounter
{
public:
    CComponentCounter(const CImageValues& values, size_t k, const CKxPixelRect& rect)
        : m_values(values)
        , m_k(k)
        , m_rect(rect)
        , m_bits(values.Format().components[k].bits)
        , m_bins(size_t{1} << std::min(m_bits, kMaxBits))
        , m_period(PeriodOf(values.Format(), k))
        // Tables of many entries would push each other out of the nearest cache.
        , m_laneCount(m_bins <= 1024 ? kLanes : std::max<size_t>(m_period, 2))
        , m_counts(m_period * m_laneCount * m_bins)
    {}

    void Count();

    /// Adds the counts to those of their types.
    void AddTo(std::map<EKxPixelComponentType_t, CCounts>& histograms) const;

private:
    size_t TableAt(size_t phaseY, size_t lane) const { return (phaseY * m_laneCount + lane) * m_bins; }
    CLaneTables TablesOf(size_t y);

    const CImageValues& m_values;
    const size_t m_k;
    const CKxPixelRect& m_rect;
    const unsigned m_bits;
    const size_t m_bins;
    const size_t m_period;
    const size_t m_laneCount;
    CCounts m_counts; ///< tables by line of the mosaic and lane
    std::vector<uint16_t> m_narrow;
    std::vector<uint32_t> m_wide;
};

CLaneTables CComponentCounter::TablesOf(size_t y)
{
    CLaneTables tables{};
    for (size_t lane = 0; lane < kLanes; ++lane)
        tables[lane] = &m_counts[TableAt(y % m_period, lane % m_laneCount)];
    return tables;
}

void CComponentCounter::Count()
{
    const size_t byteStep = m_bits == 8 ? m_values.PlainStep<uint8_t>(m_k) : 0;
    const size_t wordStep = m_bits > 8 ? m_values.PlainStep<uint16_t>(m_k) : 0;
    const auto mask = static_cast<uint32_t>(m_bins - 1);
    const size_t x = m_rect.nX;
    const size_t width = m_rect.nWidth;
    m_narrow.resize(byteStep || wordStep || m_bits > kMaxBits ? 0 : width);
    m_wide.resize(m_bits > kMaxBits ? width : 0);
    for (size_t y = m_rect.nY; y < m_rect.nY + m_rect.nHeight; ++y) {
        const CLaneTables tables = TablesOf(y);
        if (byteStep != 0) {
            CountLine(m_values.PlainLine<uint8_t>(m_k, y) + x * byteStep, byteStep, width, mask, tables);
        } else if (wordStep != 0) {
            CountLine(m_values.PlainLine<uint16_t>(m_k, y) + x * wordStep, wordStep, width, mask, tables);
        } else if (m_bits <= kMaxBits) {
            m_values.Read(m_k, x, y, width, m_narrow.data());
            CountLine(m_narrow.data(), 1, width, mask, tables);
        } else {
            m_values.Read(m_k, x, y, width, m_wide.data());
            for (size_t i = 0; i < width; ++i)
                ++tables[i % kLanes][m_wide[i] >> (m_bits - kMaxBits)];
        }
    }
}

void CComponentCounter::AddTo(std::map<EKxPixelComponentType_t, CCounts>& histograms) const
{
    const CPixelFormatRow& row = m_values.Format();
    // Signed values lie behind the others as numbers without sign.
    const size_t sign = SignBit(row.components[m_k]) >> (m_bits > kMaxBits ? m_bits - kMaxBits : 0);
    for (size_t phaseY = 0; phaseY < m_period; ++phaseY) {
        for (size_t lane = 0; lane < m_laneCount; ++lane) {
            CCounts& counts = histograms[ComponentType(row, m_k, m_rect.nX + lane, phaseY)];
            counts.resize(m_bins);
            const uint32_t* const table = &m_counts[TableAt(phaseY, lane)];
            for (size_t i = 0; i < m_bins; ++i)
                counts[i ^ sign] += table[i];
        }
    }
}

CKxPixelRect CheckedRect(const CImageValues& values, const CKxPixelRect* pRect)
{
    const CKxPixelRect rect = pRect ? *pRect : CKxPixelRect{0, 0, values.Width(), values.Height()};
    const auto isInside = [](size_t offset, size_t size, size_t whole) {
        return size > 0 && offset < whole && size <= whole - offset;
    };
    if (!isInside(rect.nX, rect.nWidth, values.Width()) || !isInside(rect.nY, rect.nHeight, values.Height()))
        throw OUT_OF_RANGE_EXCEPTION(
            "The part of %zu x %zu pixels at %zu, %zu must lie in the image of %zu x %zu", rect.nWidth,
            rect.nHeight, rect.nX, rect.nY, values.Width(), values.Height());
    constexpr size_t kMaxCount = std::numeric_limits<uint32_t>::max();
    if (rect.nWidth * rect.nHeight > kMaxCount)
        throw OUT_OF_RANGE_EXCEPTION("%zu x %zu pixels must be equal or smaller than Max = %zu", rect.nWidth,
                                     rect.nHeight, kMaxCount);
    return rect;
}

} // namespace

void AppendHistogram(const IKxImage* pImage, const CKxPixelRect* pRect,
                     IKxGraphDataBufferListResizable* pList)
{
    const CImageValues values(pImage);
    CheckGraphSource(values, pList);
    const CKxPixelRect rect = CheckedRect(values, pRect);
    GenICam::GuardBadAlloc([&] {
        std::map<EKxPixelComponentType_t, CCounts> histograms;
        for (size_t k = 0; k < values.ComponentCount(); ++k) {
            CComponentCounter counter(values, k, rect);
            counter.Count();
            counter.AddTo(histograms);
        }
        for (const auto& [type, counts] : histograms) {
            const uint32_t total = std::accumulate(counts.begin(), counts.end(), uint32_t{0});
            if (total == 0) // a part can be smaller than the mosaic
                continue;
            uint32_t* const pValues =
                pList->Append({KxGraphDataKind_Histogram, type, total, 1}, counts.size());
            std::copy(counts.begin(), counts.end(), pValues);
        }
    });
}

} // namespace KxApi
