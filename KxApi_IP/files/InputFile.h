// SPDX-License-Identifier: Apache-2.0
// The bytes of a file.
#pragma once

#include <Base/GCString.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace KxApi
{
namespace Detail
{

/// Memory that, unlike a vector's, isn't cleared before it is filled.
struct CBytes
{
    CBytes() = default;
    explicit CBytes(size_t count)
        : data(new uint8_t[count])
        , size(count)
    {}

    std::unique_ptr<uint8_t[]> data; // NOLINT(cppcoreguidelines-avoid-c-arrays)
    size_t size = 0;
};

/// All of a regular file of at most `nMaxSize` bytes. Raises CKxLinuxErrorException with path and cause,
/// RuntimeException when it is larger, BadAllocException.
CBytes ReadFile(const GenICam::gcstring& strPath, uint64_t nMaxSize);

} // namespace Detail
} // namespace KxApi
