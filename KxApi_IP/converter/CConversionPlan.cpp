// SPDX-License-Identifier: Apache-2.0
#include "CConversionPlan.h"

#include "CWorkers.h"
#include "RangeRows.h"
#include "ValueTables.h"

#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <algorithm>
#include <atomic>
#include <cmath>

namespace KxApi
{
namespace Detail
{
namespace
{

/// Fewer pixels are done before a helper is awake.
constexpr size_t kPixelsPerThread = 512 * 1024;

/// Bands for each thread: more than one, so that a thread that is held up leaves its share to the others.
constexpr size_t kBandsPerThread = 4;

CPolarizationOptions PolarizationOptions(const CSettingValues& values)
{
    CPolarizationOptions options;
    options.method = values.GetEnum<EKxPolarizationImageTransformationMethod_t>(
        ESetting::PolarizationImageTransformationMethod);
    options.angle = values.Get<double>(ESetting::PolarizationSpecifiedAngle);
    options.isBilinear = values.GetEnum<EKxPolarizationInterpolationMethod_t>(
                             ESetting::PolarizationSpecifiedAngleInterpolationMethod) ==
                         KxPolarizationInterpolationMethod_Bilinear;
    options.isDark = values.Get<int>(ESetting::ADOLPDarkMode) != 0;
    options.circle.resize(256);
    SetColorMap(options.circle.data(), KxColorMapType_PseudoColorBGRB,
                values.Get<int>(ESetting::ADOLPColorInversion) != 0,
                values.Get<int>(ESetting::ADOLPColorPhase));
    return options;
}

bool IsGreyMethod(EKxBayerInterpolationMethod_t method)
{
    return method == KxBayerInterpolationMethod_Off || method == KxBayerInterpolationMethod_Mono;
}

/// Whether the source stage makes one channel.
bool IsGreySource(const CSourceFormat& source, EKxBayerInterpolationMethod_t bayer,
                  EKxPolarizationImageTransformationMethod_t polarization)
{
    if (source.isPolarized && polarization == KxPolarizationImageTransformationMethod_ADOLP)
        return false;
    if (source.isPolarized && !KeepsColor(polarization))
        return true;
    return source.family == EFamily::Mono || (source.family == EFamily::Bayer && IsGreyMethod(bayer));
}

/// Whether what is cut off a value would show in the upper eight bits of the result: where it is multiplied
/// by more than 1, or decides between directions.
bool NeedsLowBits(const CSourceFormat& source, EKxBayerInterpolationMethod_t bayer)
{
    if (source.isReal)
        return true; // made in 16 bits
    const bool isWeighing = bayer == KxBayerInterpolationMethod_Bilinear2 ||
                            bayer == KxBayerInterpolationMethod_Bilinear3 ||
                            bayer == KxBayerInterpolationMethod_Bicubic;
    return source.family == EFamily::Ycc || (source.family == EFamily::Bayer && isWeighing);
}

struct CLumaWeights
{
    double red;
    double blue;
};

CYccMatrix MakeYccMatrix(EYccKind kind, unsigned nBits)
{
    constexpr CLumaWeights kWeights601{0.299, 0.114}, kWeights709{0.2126, 0.0722},
        kWeights2020{0.2627, 0.0593};
    const CLumaWeights weights = kind == EYccKind::Limited709    ? kWeights709
                                 : kind == EYccKind::Limited2020 ? kWeights2020
                                                                 : kWeights601;
    const bool isFull = kind == EYccKind::Full601;
    const int32_t nMax = (1 << nBits) - 1;
    const int nShift = static_cast<int>(nBits) - 8;
    const double yScale = isFull ? 1 : double{1} * nMax / (219 << nShift);
    // The chroma of the full range has the same steps as luma.
    const double chromaScale = isFull ? 2 : double{2} * nMax / (224 << nShift);
    const double green = 1 - weights.red - weights.blue;
    const auto fixed = [](double factor) { return static_cast<int32_t>(std::lround(factor * 65536)); };
    CYccMatrix matrix{};
    matrix.nYOffset = isFull ? 0 : 16 << nShift;
    matrix.nChromaOffset = 128 << nShift;
    matrix.nMax = nMax;
    matrix.nY = fixed(yScale);
    matrix.nCrToR = fixed((1 - weights.red) * chromaScale);
    matrix.nCbToB = fixed((1 - weights.blue) * chromaScale);
    matrix.nCrToG = fixed(-(1 - weights.red) * weights.red / green * chromaScale);
    matrix.nCbToG = fixed(-(1 - weights.blue) * weights.blue / green * chromaScale);
    return matrix;
}

/// A conversion whose values keep their order is one of as many grey pixels.
CConversionTask AsValues(const CConversionTask& task)
{
    const CSourceFormat& source = task.source;
    const EDestinationLayout layout = task.pDestination->layout;
    const bool isRgb =
        layout == EDestinationLayout::Rgb && source.anChannel[0] == 0 && source.anChannel[1] == 1;
    const bool isBgr =
        layout == EDestinationLayout::Bgr && source.anChannel[0] == 2 && source.anChannel[1] == 1;
    if (source.family != EFamily::Rgb || source.order != EOrder::Three || source.packing == EPacking::Table ||
        !(isRgb || isBgr) || !HasUnpackKernels())
        return task;
    const auto* const pGrey = FindGreyDestination(task.pDestination->nBits);
    CConversionTask work{source, pGrey, 3 * task.nWidth, task.values};
    work.source.family = EFamily::Mono;
    work.source.order = EOrder::Single;
    work.source.nChannels = 1;
    work.source.nColumnsPerPixel = 3;
    return work;
}

} // namespace

bool HasColorResult(const CSourceFormat& source, const CSettingValues& values)
{
    if (!source.isPolarized)
        return source.HasColor();
    const auto method = values.GetEnum<EKxPolarizationImageTransformationMethod_t>(
        ESetting::PolarizationImageTransformationMethod);
    return method == KxPolarizationImageTransformationMethod_ADOLP ||
           (source.HasColor() && KeepsColor(method));
}

CConversionPlan::CConversionPlan(const CConversionTask& task)
    : m_task(task)
    , m_work(AsValues(task))
    , m_gamma(task.values.Get<double>(ESetting::Gamma))
    , m_bayer(task.values.GetEnum<EKxBayerInterpolationMethod_t>(ESetting::BayerInterpolationMethod))
    , m_polarization(PolarizationOptions(task.values))
    , m_isCopy(task.source.pInfo->GetPixelFormat() == task.pDestination->pixelFormat && m_gamma == 1.0)
    , m_isPolarized(m_work.source.isPolarized &&
                    m_polarization.method != KxPolarizationImageTransformationMethod_Off)
    , m_isNarrow(m_isPolarized
                     ? m_polarization.method == KxPolarizationImageTransformationMethod_ADOLP
                     : m_work.source.nBits <= 8 || (m_work.pDestination->nBits == 8 && m_gamma == 1.0 &&
                                                    !NeedsLowBits(m_work.source, m_bayer)))
    , m_isGrey(IsGreySource(m_work.source, m_bayer, m_polarization.method))
{
    if (m_isCopy) {
        // nothing happens to the values
    } else if (task.pDestination->nBits == 8) {
        MakeFinish(m_pFinish8);
    } else {
        MakeFinish(m_pFinish16);
    }
    m_engines.push_back(MakeEngine());
}

bool CConversionPlan::MakesGreyOfColor() const { return !m_isGrey && !m_work.pDestination->HasColor(); }

template <class U>
void CConversionPlan::MakeFinish(std::shared_ptr<const CFinish<U>>& pFinish) const
{
    auto pNew = std::make_shared<CFinish<U>>();
    pNew->pDestination = m_work.pDestination;
    pNew->isGrey = m_isGrey || MakesGreyOfColor();
    pNew->hasAlpha = m_work.source.HasAlpha();
    if (m_isNarrow)
        MakeTables<uint8_t>(*pNew);
    else
        MakeTables<uint16_t>(*pNew);
    pFinish = std::move(pNew);
}

template <class T, class U>
void CConversionPlan::MakeTables(CFinish<U>& finish) const
{
    const CSettingValues& values = m_work.values;
    const unsigned nSourceBits = m_isPolarized
                                     ? PolarizationResultBits(m_polarization.method, m_work.source.nBits)
                                     : m_work.source.nBits;
    const unsigned nFrom = sizeof(T) == 1 ? std::min(nSourceBits, 8U) : nSourceBits;
    const CValueOptions options{nFrom, m_work.pDestination->nBits,
                                values.GetEnum<EKxBitExpansionMode_t>(ESetting::BitExpansionMode), m_gamma};
    const CColorMapOptions map{values.GetEnum<EKxColorMapType_t>(ESetting::ColorMapType),
                               values.Get<int>(ESetting::ColorMapInversion) != 0,
                               values.Get<int32_t>(ESetting::ColorMapPhase)};
    if (m_isGrey && m_work.pDestination->HasColor() && !map.IsIdentity()) {
        for (std::vector<U>& table : MakeColorTables<U>(options, map))
            finish.tables.push_back(std::move(table));
        return;
    }
    CValueOptions alpha = options;
    alpha.gamma = 1.0;
    const bool isWide = sizeof(T) + sizeof(U) > 2;
    if (isWide)
        finish.change = FindDepthChange(options);
    if (finish.change || (!isWide && options.IsIdentity() && alpha.IsIdentity()))
        return;
    if (isWide || !options.IsIdentity())
        finish.tables.push_back(MakeValueTable<U>(options));
    if (finish.hasAlpha && (isWide || !alpha.IsIdentity()))
        finish.alphaTable = MakeValueTable<U>(alpha);
}

template <class T>
std::unique_ptr<IRowSource<T>> CConversionPlan::MakeBayerSource() const
{
    const CSourceFormat& source = m_work.source;
    return std::make_unique<CBayerRows<T, CMosaicLines<T>>>(
        CMosaicLines<T>(source, m_work.nWidth), CBayerPattern{source.nRedX, source.nRedY}, m_bayer);
}

template <class T>
std::unique_ptr<IRowSource<T>> CConversionPlan::MakeSource() const
{
    const CSourceFormat& source = m_work.source;
    const size_t nWidth = m_work.nWidth;
    if (m_isPolarized) {
        if constexpr (sizeof(T) == 1)
            return MakePolarizationColorRows(source, nWidth, m_polarization);
        else
            return MakePolarizedRows(source, nWidth, m_polarization, m_bayer);
    }
    if (source.family == EFamily::Bayer && !source.isPolarized && m_bayer != KxBayerInterpolationMethod_Off)
        return MakeBayerSource<T>();
    if constexpr (sizeof(T) == 2) {
        if (source.isReal)
            return std::make_unique<CRealRows>(source, nWidth);
    }
    if constexpr (sizeof(T) == 1) {
        // Values of a byte go straight into a mono image; all other work wants rows with padding.
        if (source.order == EOrder::Single && source.packing == EPacking::Bytes &&
            !m_work.pDestination->HasColor())
            return std::make_unique<CByteLines>();
    }
    if (source.family == EFamily::Ycc) {
        const unsigned nBits = sizeof(T) == 1 ? std::min<unsigned>(source.nBits, 8) : source.nBits;
        return std::make_unique<CYccRows<T>>(source, MakeYccMatrix(source.ycc, nBits), MakesGreyOfColor(),
                                             nWidth);
    }
    return std::make_unique<CPlainRows<T>>(source, nWidth);
}

template <class T>
std::unique_ptr<IRowSource<T>> CConversionPlan::MakeGreySource() const
{
    const CSourceFormat& source = m_work.source;
    if (source.family == EFamily::Ycc) // which is grey by itself
        return MakeSource<T>();
    if constexpr (sizeof(T) == 1) {
        if (source.family == EFamily::Rgb && source.order == EOrder::Three && HasUnpackKernels() &&
            source.packing == EPacking::Bytes && source.anChannel[1] == 1)
            return std::make_unique<CGreyPixels>(source.anChannel[0] == 0);
    }
    return std::make_unique<CGreyRows<T>>(MakeSource<T>());
}

template <class T>
std::unique_ptr<IRowEngine> CConversionPlan::MakeEngineOf() const
{
    std::unique_ptr<IRowSource<T>> pSource = MakesGreyOfColor() ? MakeGreySource<T>() : MakeSource<T>();
    if (m_pFinish8)
        return std::make_unique<CRowEngine<T, uint8_t>>(std::move(pSource), m_pFinish8, m_work.nWidth);
    return std::make_unique<CRowEngine<T, uint16_t>>(std::move(pSource), m_pFinish16, m_work.nWidth);
}

std::unique_ptr<IRowEngine> CConversionPlan::MakeEngine() const
{
    if (m_isCopy)
        return std::make_unique<CCopyEngine>(m_task.source.pInfo->GetLinePitch(m_task.nWidth, 1));
    return m_isNarrow ? MakeEngineOf<uint8_t>() : MakeEngineOf<uint16_t>();
}

namespace
{

/// What the threads of a conversion share.
struct CRun
{
    std::vector<std::unique_ptr<IRowEngine>>& engines;
    size_t nHeight;
    size_t nBandHeight;
    std::atomic<size_t> nNextLine;
};

} // namespace

void CConversionPlan::RunPart(void* pContext, size_t nPart)
{
    CRun& run = *static_cast<CRun*>(pContext);
    for (;;) {
        const size_t nFirst = run.nNextLine.fetch_add(run.nBandHeight);
        if (nFirst >= run.nHeight)
            return;
        run.engines[nPart]->Run(nFirst, std::min(nFirst + run.nBandHeight, run.nHeight));
    }
}

void CConversionPlan::Run(const CSourceView& source, const CTargetView& target, size_t nThreads,
                          CWorkers& workers)
{
    const size_t nWanted = std::clamp<size_t>(source.nWidth * source.nHeight / kPixelsPerThread, 1, nThreads);
    if (nWanted > 1 && workers.GetHelpers() + 1 != nThreads)
        workers.SetHelpers(nThreads - 1);
    const size_t nParts = std::min(nWanted, workers.GetHelpers() + 1);
    while (m_engines.size() < nParts)
        m_engines.push_back(MakeEngine());
    CSourceView work = source;
    work.nWidth = m_work.nWidth;
    if (m_work.source.isReal)
        work.scale = FindRealScale(m_work.source, source);
    for (const std::unique_ptr<IRowEngine>& pEngine : m_engines)
        pEngine->Begin(work, target);
    const size_t nBands = nParts == 1 ? 1 : nParts * kBandsPerThread;
    CRun run{m_engines, source.nHeight, (source.nHeight + nBands - 1) / nBands, {0}};
    workers.Run(nParts - 1, RunPart, &run);
}

} // namespace Detail
} // namespace KxApi
