// SPDX-License-Identifier: Apache-2.0
// Values that the info functions hand out.
#pragma once

#include "Error.h"

#include <cstdint>
#include <cstring>
#include <string>

namespace KxProducer
{

/// Version of GenTL that the functions are those of.
inline constexpr uint32_t kGenTLMajor = 1, kGenTLMinor = 6;

/// A value with its GenTL type, as bytes.
struct CInfo
{
    GenTL::INFO_DATATYPE type;
    std::string bytes;
};

/// A text; its bytes hold the ending NUL.
inline CInfo TextInfo(const std::string& text)
{
    return {GenTL::INFO_DATATYPE_STRING, std::string(text.c_str(), text.size() + 1)};
}

/// What a text's bytes hold up to the first NUL.
inline std::string UpToNul(const std::string& bytes) { return bytes.substr(0, bytes.find('\0')); }

template <class T>
CInfo RawInfo(GenTL::INFO_DATATYPE type, const T& value)
{
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return {type, std::move(bytes)};
}

inline CInfo Int32Info(int32_t value) { return RawInfo(GenTL::INFO_DATATYPE_INT32, value); }
inline CInfo UInt32Info(uint32_t value) { return RawInfo(GenTL::INFO_DATATYPE_UINT32, value); }
inline CInfo UInt64Info(uint64_t value) { return RawInfo(GenTL::INFO_DATATYPE_UINT64, value); }
inline CInfo SizeInfo(size_t value) { return RawInfo(GenTL::INFO_DATATYPE_SIZET, value); }
inline CInfo PointerInfo(void* value) { return RawInfo(GenTL::INFO_DATATYPE_PTR, value); }
inline CInfo BoolInfo(bool value)
{
    return RawInfo(GenTL::INFO_DATATYPE_BOOL8, static_cast<uint8_t>(value ? 1 : 0));
}

/// Copies bytes to a caller: without a buffer only their number is told.
inline void ReturnBytes(const std::string& bytes, void* pBuffer, size_t* piSize)
{
    if (!piSize)
        Fail(GenTL::GC_ERR_INVALID_PARAMETER, "The size argument is null");
    if (pBuffer) {
        if (*piSize < bytes.size())
            Fail(GenTL::GC_ERR_BUFFER_TOO_SMALL, "The value takes %zu bytes, the buffer has %zu",
                 bytes.size(), *piSize);
        std::memcpy(pBuffer, bytes.data(), bytes.size());
    }
    *piSize = bytes.size();
}

inline void ReturnInfo(const CInfo& info, GenTL::INFO_DATATYPE* piType, void* pBuffer, size_t* piSize)
{
    ReturnBytes(info.bytes, pBuffer, piSize);
    if (piType) // the standard's own examples pass null
        *piType = info.type;
}

[[noreturn]] inline void FailUnknownInfo(int32_t command)
{
    Fail(GenTL::GC_ERR_NOT_IMPLEMENTED, "There is no info command %d here", command);
}

} // namespace KxProducer
