// SPDX-License-Identifier: Apache-2.0
// Takes the rows that a source stage makes into the lines of the target image.
#pragma once

#include "DestinationFormats.h"
#include "RowSources.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

namespace KxApi
{
namespace Detail
{

/// The image that is written.
struct CTargetView
{
    uint8_t* pBytes;
    size_t nLinePitch;
    size_t nHeight;
    bool reverseY;

    uint8_t* Line(size_t nLine) const
    {
        return pBytes + (reverseY ? nHeight - 1 - nLine : nLine) * nLinePitch;
    }
};

/// Converts lines; one thread has one.
class IRowEngine
{
public:
    IRowEngine() = default;
    IRowEngine(const IRowEngine&) = delete;
    IRowEngine& operator=(const IRowEngine&) = delete;
    virtual ~IRowEngine() = default;

    virtual void Begin(const CSourceView& source, const CTargetView& target) noexcept = 0;
    /// Lines nFirst up to, not including, nEnd.
    virtual void Run(size_t nFirst, size_t nEnd) noexcept = 0;
};

/// What happens to the values of a row, shared by the engines of a plan.
template <class U>
struct CFinish
{
    const CDestinationFormat* pDestination;
    bool isGrey;                        ///< the row has one channel
    bool hasAlpha;                      ///< it has a fourth
    std::optional<CDepthChange> change; ///< of all channels, in place of tables
    std::vector<std::vector<U>> tables; ///< none: values stay; one for all channels, or one for each
    std::vector<U> alphaTable;          ///< empty: values stay
};

/// T: values of the source stage, U: of the target.
template <class T, class U>
class CRowEngine final : public IRowEngine
{
public:
    CRowEngine(std::unique_ptr<IRowSource<T>> pSource, std::shared_ptr<const CFinish<U>> pFinish,
               size_t nWidth)
        : m_pSource(std::move(pSource))
        , m_pFinish(std::move(pFinish))
        , m_nWidth(nWidth)
        , m_nPixelBytes(m_pFinish->pDestination->GetPixelBytes())
        , m_rows(kMaxChannels, kPartWidth)
        , m_opaque(1, kPartWidth)
    {
        std::fill_n(m_opaque.Row(0), kPartWidth, static_cast<U>((1U << m_pFinish->pDestination->nBits) - 1));
    }

    void Begin(const CSourceView& source, const CTargetView& target) noexcept override
    {
        m_pSource->Begin(source);
        m_target = target;
    }

    void Run(size_t nFirst, size_t nEnd) noexcept override
    {
        for (size_t nLine = nFirst; nLine < nEnd; ++nLine) {
            uint8_t* const pLine = m_target.Line(nLine);
            m_pSource->BeginLine(nLine);
            for (size_t nColumn = 0; nColumn < m_nWidth; nColumn += kPartWidth) {
                uint8_t* const pPixels = pLine + nColumn * m_nPixelBytes;
                const size_t nCount = std::min(kPartWidth, m_nWidth - nColumn);
                Fetch(pPixels, nCount * m_nPixelBytes);
                const CRow<T> row = m_pSource->Get(nColumn, nCount);
                if (m_pFinish->pDestination->HasColor())
                    WriteColor(row, nCount, pPixels);
                else
                    WriteMono(row[0], nCount, pPixels);
            }
        }
    }

private:
    /// Has the target's memory brought near while the values are made: else writing would wait for it.
    static void Fetch(uint8_t* pPixels, size_t nBytes)
    {
        constexpr size_t kCacheLine = 64;
        for (size_t i = 0; i < nBytes; i += kCacheLine)
            __builtin_prefetch(pPixels + i, 1);
    }

    void WriteMono(const T* pRow, size_t nCount, uint8_t* pPixels)
    {
        auto* const pValues = reinterpret_cast<U*>(pPixels);
        const std::vector<std::vector<U>>& tables = m_pFinish->tables;
        if (!Map(pRow, nCount, tables.empty() ? nullptr : tables.data(), pValues))
            std::memcpy(pValues, pRow, nCount * sizeof(U));
    }

    /// The row by the change of depth or a table; false where it stays as it is.
    bool Map(const T* pRow, size_t nCount, const std::vector<U>* pTable, U* pResult) const
    {
        if constexpr (sizeof(T) + sizeof(U) > 2) {
            if (m_pFinish->change) {
                ChangeDepth(pRow, nCount, *m_pFinish->change, pResult);
                return true;
            }
        } else if (pTable && pTable->size() == 16) {
            MapRowOf16(pRow, nCount, pTable->data(), pResult);
            return true;
        }
        if (!pTable)
            return false;
        MapRow(pRow, nCount, pTable->data(), pResult);
        return true;
    }

    const U* Mapped(const T* pRow, size_t nCount, const std::vector<U>* pTable, size_t nChannel)
    {
        if (Map(pRow, nCount, pTable, m_rows.Row(nChannel)))
            return m_rows.Row(nChannel);
        return reinterpret_cast<const U*>(pRow); // values that stay as they are have the type of the result
    }

    void WriteColor(const CRow<T>& row, size_t nCount, uint8_t* pPixels)
    {
        if (PackChanged(row, nCount, pPixels))
            return;
        const std::vector<std::vector<U>>& tables = m_pFinish->tables;
        const U* apRows[kMaxChannels] = {};
        for (size_t k = 0; k < 3; ++k) {
            if (k > 0 && m_pFinish->isGrey && tables.size() < 3) {
                apRows[k] = apRows[0];
                continue;
            }
            const std::vector<U>* const pTable =
                tables.empty() ? nullptr : &tables[std::min(k, tables.size() - 1)];
            apRows[k] = Mapped(row[m_pFinish->isGrey ? 0 : k], nCount, pTable, k);
        }
        apRows[3] = m_opaque.Row(0);
        if (m_pFinish->hasAlpha && m_pFinish->pDestination->HasAlpha()) {
            const std::vector<U>& alphas = m_pFinish->alphaTable;
            apRows[3] = Mapped(row[3], nCount, alphas.empty() ? nullptr : &alphas, 3);
        }
        Pack(apRows, nCount, pPixels);
    }

    /// The rows of three channels with the change of depth on the way; false where it has to be made before.
    bool PackChanged(const CRow<T>& row, size_t nCount, uint8_t* pPixels)
    {
        if constexpr (sizeof(T) == 2 && sizeof(U) == 2) {
            if (m_pFinish->change && !IsWord() && !m_pFinish->pDestination->HasAlpha()) {
                const bool isGrey = m_pFinish->isGrey;
                const T* apRows[] = {row[0], row[isGrey ? 0 : 1], row[isGrey ? 0 : 2]};
                if (IsBlueFirst())
                    std::swap(apRows[0], apRows[2]);
                PackRow(apRows, nCount, *m_pFinish->change, reinterpret_cast<U*>(pPixels));
                return true;
            }
        }
        return false;
    }

    bool IsWord() const
    {
        const EDestinationLayout layout = m_pFinish->pDestination->layout;
        return layout == EDestinationLayout::RgbWord || layout == EDestinationLayout::BgrWord;
    }
    bool IsBlueFirst() const
    {
        const EDestinationLayout layout = m_pFinish->pDestination->layout;
        return layout == EDestinationLayout::Bgr || layout == EDestinationLayout::Bgra ||
               layout == EDestinationLayout::BgrWord;
    }

    void Pack(const U** apRows, size_t nCount, uint8_t* pPixels)
    {
        if (IsBlueFirst())
            std::swap(apRows[0], apRows[2]);
        if constexpr (sizeof(U) == 2) {
            if (IsWord()) {
                PackRow10p32(apRows, nCount, pPixels);
                return;
            }
        }
        PackRow(apRows, m_pFinish->pDestination->HasAlpha() ? 4 : 3, nCount, reinterpret_cast<U*>(pPixels));
    }

    std::unique_ptr<IRowSource<T>> m_pSource;
    std::shared_ptr<const CFinish<U>> m_pFinish;
    size_t m_nWidth;
    size_t m_nPixelBytes;
    CTargetView m_target{};
    CRowBuffer<U> m_rows; ///< of a part
    CRowBuffer<U> m_opaque;
};

/// The lines as they are.
class CCopyEngine final : public IRowEngine
{
public:
    explicit CCopyEngine(size_t nLineBytes)
        : m_nLineBytes(nLineBytes)
    {}

    void Begin(const CSourceView& source, const CTargetView& target) noexcept override
    {
        m_source = source;
        m_target = target;
    }

    void Run(size_t nFirst, size_t nEnd) noexcept override
    {
        const uint8_t* pLine = m_source.pBytes + nFirst * m_source.nLinePitch;
        if (m_source.nLinePitch == m_target.nLinePitch && !m_target.reverseY) {
            std::memcpy(m_target.Line(nFirst), pLine,
                        (nEnd - nFirst - 1) * m_source.nLinePitch + m_nLineBytes);
            return;
        }
        for (size_t nLine = nFirst; nLine < nEnd; ++nLine, pLine += m_source.nLinePitch)
            std::memcpy(m_target.Line(nLine), pLine, m_nLineBytes);
    }

private:
    size_t m_nLineBytes;
    CSourceView m_source{};
    CTargetView m_target{};
};

} // namespace Detail
} // namespace KxApi
