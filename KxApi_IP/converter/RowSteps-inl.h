// SPDX-License-Identifier: Apache-2.0
// Steps over a line of an image; for files that are compiled once for each instruction set, as this is.
#if defined(KXAPI_IP_ROW_STEPS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef KXAPI_IP_ROW_STEPS_INL_H
#undef KXAPI_IP_ROW_STEPS_INL_H
#else
#define KXAPI_IP_ROW_STEPS_INL_H
#endif

#include "RowKernels.h"

#include <hwy/highway.h>

#include <algorithm>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace KxApi
{
namespace Detail
{
namespace HWY_NAMESPACE
{

constexpr size_t kMaxRead = 1024;

/// Runs `body(bytes, at)` over the values of a line in steps of nValues, of which it reads nRead bytes and
/// goes on by nStep. The end of the line is read from a copy with room behind it.
template <class Body>
HWY_INLINE void ForSteps(const CPackedRow& source, size_t nValues, size_t nStep, size_t nRead,
                         const Body& body)
{
    size_t nAt = 0;
    size_t nOffset = 0;
    for (; nAt + nValues <= source.nValues && nOffset + nRead <= source.nBytes;
         nAt += nValues, nOffset += nStep)
        body(source.pBytes + nOffset, nAt);
    uint8_t anCopy[kMaxRead];
    for (; nAt < source.nValues; nAt += nValues, nOffset += nStep) {
        const size_t nLeft = std::min(source.nBytes - nOffset, nRead);
        std::memcpy(anCopy, source.pBytes + nOffset, nLeft);
        std::memset(anCopy + nLeft, 0, nRead - nLeft);
        body(anCopy, nAt);
    }
}

/// Kernels by the values of an enum, in its order; null for values that have no kernel.
template <class Row>
using Kernel = void (*)(const CPackedRow& source, Row row);

template <class Kind, class Row, size_t nKinds>
void RunKernel(const Kernel<Row> (&kernels)[nKinds], Kind kind, const CPackedRow& source, Row row)
{
    if (const Kernel<Row> kernel = kernels[static_cast<size_t>(kind)])
        kernel(source, row);
}

} // namespace HWY_NAMESPACE
} // namespace Detail
} // namespace KxApi
HWY_AFTER_NAMESPACE();

#endif
