// SPDX-License-Identifier: Apache-2.0
// Graph data apart from the lists that hold them.
#pragma once

#include <KxApi_IP/IKxGraphDataBufferList.h>

#include <cstdint>
#include <vector>

namespace KxApi
{
namespace Detail
{

class COutputFile;
struct CFileContent;

struct CGraphLine
{
    CKxGraphDataDescription description;
    std::vector<uint32_t> values;
};

using CGraphLines = std::vector<CGraphLine>;

/// Whether the kind's values have to be divided.
constexpr bool IsDivided(EKxGraphDataKind_t eKind)
{
    return eKind == KxGraphDataKind_InterpolatedProfile || eKind == KxGraphDataKind_AveragedProfile;
}

/// Whether kind and divisor are possible.
constexpr bool IsSound(const CKxGraphDataDescription& description)
{
    const bool isKnown = description.eKind >= KxGraphDataKind_Histogram &&
                         description.eKind <= KxGraphDataKind_AveragedProfile;
    return isKnown && description.nDivisor >= 1 &&
           (description.nDivisor == 1 || IsDivided(description.eKind));
}

/// Failures stay in the file.
void WriteRawGraph(const CGraphLines& lines, COutputFile& file);
void WriteCsvGraph(const CGraphLines& lines, COutputFile& file);

/// Reads either type. Raises RuntimeException, with path and cause, for anything but a sound file.
CGraphLines ReadGraphFile(const CFileContent& content);
CGraphLines ReadRawGraph(const CFileContent& content);
CGraphLines ReadCsvGraph(const CFileContent& content);

} // namespace Detail
} // namespace KxApi
