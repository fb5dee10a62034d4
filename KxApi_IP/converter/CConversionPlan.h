// SPDX-License-Identifier: Apache-2.0
// Everything of a conversion that doesn't depend on the pixels.
#pragma once

#include "CConverterSettings.h"
#include "CRowEngine.h"
#include "DestinationFormats.h"
#include "PolarizedRows.h"
#include "SourceFormats.h"

#include <memory>
#include <vector>

namespace KxApi
{
namespace Detail
{

class CWorkers;

/// What a conversion is planned for.
struct CConversionTask
{
    CSourceFormat source;
    const CDestinationFormat* pDestination;
    size_t nWidth;
    CSettingValues values;

    bool operator==(const CConversionTask& other) const
    {
        return source.pRow == other.source.pRow && pDestination == other.pDestination &&
               nWidth == other.nWidth && values == other.values;
    }
};

/// Whether the result of a source has colour, as a destination is chosen for it.
bool HasColorResult(const CSourceFormat& source, const CSettingValues& values);

/// The stages and tables of a conversion, with the memory that they work in. One thread at a time.
class CConversionPlan
{
public:
    /// Raises std::bad_alloc.
    explicit CConversionPlan(const CConversionTask& task);

    const CConversionTask& GetTask() const { return m_task; }

    /// Converts an image. Threads are taken from the workers, at most nThreads with the caller's; the first
    /// time that so many take part allocates memory for them.
    void Run(const CSourceView& source, const CTargetView& target, size_t nThreads, CWorkers& workers);

private:
    template <class T>
    std::unique_ptr<IRowSource<T>> MakeSource() const;
    template <class T>
    std::unique_ptr<IRowSource<T>> MakeBayerSource() const;
    template <class T>
    std::unique_ptr<IRowSource<T>> MakeGreySource() const;
    std::unique_ptr<IRowEngine> MakeEngine() const;
    template <class T>
    std::unique_ptr<IRowEngine> MakeEngineOf() const;
    template <class U>
    void MakeFinish(std::shared_ptr<const CFinish<U>>& pFinish) const;
    template <class T, class U>
    void MakeTables(CFinish<U>& finish) const;
    bool MakesGreyOfColor() const;
    static void RunPart(void* pContext, size_t nPart);

    const CConversionTask m_task;
    const CConversionTask m_work; ///< the same as it is done
    const double m_gamma;
    const EKxBayerInterpolationMethod_t m_bayer;
    const CPolarizationOptions m_polarization;
    const bool m_isCopy;                                ///< formats and values stay the same
    const bool m_isPolarized;                           ///< the polarisers matter
    const bool m_isNarrow;                              ///< work is done in bytes
    const bool m_isGrey;                                ///< the source stage makes one channel
    std::shared_ptr<const CFinish<uint8_t>> m_pFinish8; ///< the one of the destination's depth
    std::shared_ptr<const CFinish<uint16_t>> m_pFinish16;
    std::vector<std::unique_ptr<IRowEngine>> m_engines; ///< by thread
};

} // namespace Detail
} // namespace KxApi
