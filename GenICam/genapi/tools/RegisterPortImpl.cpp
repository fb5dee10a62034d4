// SPDX-License-Identifier: Apache-2.0
#include <Base/GCException.h>
#include <GenApi/RegisterPortImpl.h>

#include <cstring>

namespace GenApi
{
namespace
{
constexpr int64_t kRegisterSize = 4;
constexpr int64_t kAddressEnd = int64_t(1) << 32;

void CheckPlace(int64_t address, int64_t length)
{
    const auto a = static_cast<long long>(address), n = static_cast<long long>(length);
    if (address % kRegisterSize != 0 || length % kRegisterSize != 0)
        throw INVALID_ARGUMENT_EXCEPTION("Address = %lld and Length = %lld must be multiples of %lld", a, n,
                                         static_cast<long long>(kRegisterSize));
    if (address < 0 || length < 0 || length > kAddressEnd || address > kAddressEnd - length)
        throw OUT_OF_RANGE_EXCEPTION("Address = %lld with Length = %lld lies outside 32-bit addresses", a, n);
}
} // namespace

void CRegisterPortImpl::Read(void* pBuffer, int64_t Address, int64_t Length)
{
    CheckPlace(Address, Length);
    for (int64_t done = 0; done < Length; done += kRegisterSize) {
        uint32_t value = ReadRegister(static_cast<uint32_t>(Address + done));
        if (m_swapBytes)
            value = __builtin_bswap32(value);
        std::memcpy(static_cast<uint8_t*>(pBuffer) + done, &value, sizeof value);
    }
}

void CRegisterPortImpl::Write(const void* pBuffer, int64_t Address, int64_t Length)
{
    CheckPlace(Address, Length);
    for (int64_t done = 0; done < Length; done += kRegisterSize) {
        uint32_t value = 0;
        std::memcpy(&value, static_cast<const uint8_t*>(pBuffer) + done, sizeof value);
        WriteRegister(static_cast<uint32_t>(Address + done), m_swapBytes ? __builtin_bswap32(value) : value);
    }
}

} // namespace GenApi
