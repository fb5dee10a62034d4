// SPDX-License-Identifier: Apache-2.0
// A port without a device behind it.
#pragma once

#include <GenApi/GenApi.h>

#include <array>
#include <cstdint>
#include <unordered_map>

namespace Kx
{

/// Memory of the full 64-bit address space that is zero until it is written. One thread at a time, which a
/// node map makes sure of.
class MemoryPort : public GenApi::IPort
{
public:
    /// Longest access in bytes; RuntimeException beyond. Descriptions can ask for any length.
    static constexpr int64_t kMaxLength = int64_t{16} << 20;

    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void* pBuffer, int64_t Address, int64_t Length) override;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override;

private:
    static constexpr uint64_t kPageSize = 4096;
    using Page = std::array<uint8_t, kPageSize>;

    std::unordered_map<uint64_t, Page> m_pages; // only those that were written
};

} // namespace Kx
