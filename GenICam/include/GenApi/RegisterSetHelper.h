// SPDX-License-Identifier: Apache-2.0
// Moving values between registers and buffers.
#pragma once

#include <Base/GCException.h>
#include <GenApi/GenApiNamespace.h>

#include <cstddef>
#include <cstring>

namespace GenApi
{

/// All return the size that was moved, and raise OutOfRangeException if the two sizes differ.
class CRegisterSetHelper
{
public:
    static size_t CopyData(void* pDestination, size_t DestinationSize, const void* pSource, size_t SourceSize)
    {
        if (DestinationSize != SourceSize)
            throw OUT_OF_RANGE_EXCEPTION("Size = %zu of the source must be the destination's size = %zu",
                                         SourceSize, DestinationSize);
        if (SourceSize != 0)
            std::memcpy(pDestination, pSource, SourceSize);
        return SourceSize;
    }
    template <typename T>
    static size_t CopyToBuffer(void* pBuffer, size_t Size, T* pValue)
    {
        return CopyData(pBuffer, Size, pValue, sizeof(T));
    }
    template <typename T>
    static size_t CopyFromBuffer(T* pValue, const void* pBuffer, size_t Size)
    {
        return CopyData(pValue, sizeof(T), pBuffer, Size);
    }
};

} // namespace GenApi
