// SPDX-License-Identifier: Apache-2.0
#include <Base/GCBadAlloc.h>
#include <KxSDKCommon/ColorMap.h>

#include <vector>

namespace KxApi
{
namespace
{

constexpr size_t kTableSize = 256;

/// Entries `first` to `first + count - 1` go from `start` in steps, which may be negative.
struct CRamp
{
    size_t nFirst;
    size_t nCount;
    int nStart;
    int nStep;
};

// clang-format off
constexpr CRamp kGrey[] = {
    {0, 256, 0x000000, 0x010101},
};
constexpr CRamp kBlueToRed[] = {
    {  0, 64, 0x0000FF,  0x000400},
    { 64, 64, 0x00FFFF, -0x000004},
    {128, 64, 0x00FF00,  0x040000},
    {192, 64, 0xFFFF00, -0x000400},
    {256, 64, 0xFF0000,  0x000004},
    {320, 64, 0xFF00FF, -0x040000},
};
// Four entries stand alone: six ramps of 42 fill 252 of the 256.
constexpr CRamp kWholeCircle[] = {
    {  0, 42, 0x0000FF,  0x000600},
    { 42, 42, 0x00FFFF, -0x000006},
    { 84,  1, 0x00FF03,  0},
    { 85, 42, 0x00FF00,  0x060000},
    {127,  1, 0xFCFF00,  0},
    {128, 42, 0xFFFF00, -0x000600},
    {170,  1, 0xFF0300,  0},
    {171, 42, 0xFF0000,  0x000006},
    {213, 42, 0xFF00FF, -0x060000},
    {255,  1, 0x0000FF,  0},
};
// clang-format on

template <size_t N>
std::vector<unsigned int> Fill(const CRamp (&ramps)[N])
{
    std::vector<unsigned int> table(ramps[N - 1].nFirst + ramps[N - 1].nCount);
    for (const CRamp& ramp : ramps) {
        int nColor = ramp.nStart;
        for (size_t i = 0; i < ramp.nCount; ++i, nColor += ramp.nStep)
            table[ramp.nFirst + i] = static_cast<unsigned int>(nColor);
    }
    return table;
}

std::vector<unsigned int> SourceTable(EKxColorMapType_t eType)
{
    switch (eType) {
    case KxColorMapType_Normal:
        return Fill(kGrey);
    case KxColorMapType_PseudoColorBGR:
        return Fill(kBlueToRed);
    case KxColorMapType_PseudoColorBGRB:
        return Fill(kWholeCircle);
    }
    return std::vector<unsigned int>(kTableSize);
}

} // namespace

void SetColorMap(unsigned int* pTable, EKxColorMapType_t eType, bool bInversion, int nPhase)
{
    const std::vector<unsigned int> source = GenICam::GuardBadAlloc([eType] { return SourceTable(eType); });
    const size_t nPhaseByte = static_cast<unsigned int>(nPhase) & 0xFF;
    size_t nIndex = bInversion ? 0xFF - nPhaseByte : nPhaseByte;
    for (size_t i = 0; i < kTableSize; ++i) {
        pTable[i] = source[nIndex];
        if (bInversion)
            nIndex = (nIndex == 0 ? source.size() : nIndex) - 1;
        else
            nIndex = nIndex + 1 == source.size() ? 0 : nIndex + 1;
    }
}

} // namespace KxApi
