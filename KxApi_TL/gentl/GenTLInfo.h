// SPDX-License-Identifier: Apache-2.0
// Values that GenTL functions write into memory of the caller's.
#pragma once

#include <Base/GCString.h>
#include <KxApi_TL/CKxGenTLLib.h>
#include <KxSDKCommon/KxApi_Exception.h>

#include <cstdint>
#include <cstring>
#include <string>

namespace KxApi
{
namespace Detail
{

/// More than any ID, name or path has; a producer that asks for more is in error.
inline constexpr size_t kMaxTextSize = 65536;

/// Asks for a text by `call(buffer, &size)`, a GenTL function: for its size, then for the text. Returns the
/// function's error; `text` then is as it was.
template <class Call>
GenTL::GC_ERROR GetText(Call&& call, GenICam::gcstring& text)
{
    std::string buffer;
    // The text may grow between the two calls.
    for (int attempt = 0; attempt < 3; ++attempt) {
        size_t size = 0;
        GenTL::GC_ERROR error = call(static_cast<char*>(nullptr), &size);
        if (error != GenTL::GC_ERR_SUCCESS)
            return error;
        if (size > kMaxTextSize)
            return GenTL::GC_ERR_INVALID_VALUE;
        buffer.assign(size + 1, '\0'); // a 0 of our own, should the producer forget its one
        error = call(buffer.data(), &size);
        if (error == GenTL::GC_ERR_BUFFER_TOO_SMALL)
            continue;
        if (error == GenTL::GC_ERR_SUCCESS)
            text = buffer.c_str();
        return error;
    }
    return GenTL::GC_ERR_BUFFER_TOO_SMALL;
}

/// The same for an info command, where `call(&type, buffer, &size)`; a value that is no text counts as none.
template <class Call>
GenICam::gcstring GetInfoText(Call&& call)
{
    GenICam::gcstring text;
    GenTL::INFO_DATATYPE type = GenTL::INFO_DATATYPE_STRING;
    const GenTL::GC_ERROR error =
        GetText([&](char* buffer, size_t* size) { return call(&type, buffer, size); }, text);
    return error == GenTL::GC_ERR_SUCCESS && type == GenTL::INFO_DATATYPE_STRING ? text : GenICam::gcstring();
}

/// An info of fixed size, `fallback` when the producer doesn't have it or answers with another size.
template <class T, class Call>
T GetInfoNumber(Call&& call, T fallback)
{
    unsigned char buffer[16] = {}; // room for producers that write more than they ought to
    size_t size = sizeof(buffer);
    GenTL::INFO_DATATYPE type = GenTL::INFO_DATATYPE_UNKNOWN;
    if (call(&type, static_cast<void*>(buffer), &size) != GenTL::GC_ERR_SUCCESS || size != sizeof(T))
        return fallback;
    T value;
    std::memcpy(&value, buffer, sizeof(value));
    return value;
}

/// An integer info of any size, for infos whose size producers don't agree on.
template <class Call>
int64_t GetInfoInteger(Call&& call, int64_t fallback)
{
    unsigned char buffer[16] = {};
    size_t size = sizeof(buffer);
    GenTL::INFO_DATATYPE type = GenTL::INFO_DATATYPE_UNKNOWN;
    if (call(&type, static_cast<void*>(buffer), &size) != GenTL::GC_ERR_SUCCESS)
        return fallback;
    const auto as = [&buffer](auto value) {
        std::memcpy(&value, buffer, sizeof(value));
        return static_cast<int64_t>(value);
    };
    const bool isSigned = type == GenTL::INFO_DATATYPE_INT16 || type == GenTL::INFO_DATATYPE_INT32;
    switch (size) {
    case 1:
        return as(uint8_t());
    case 2:
        return isSigned ? as(int16_t()) : as(uint16_t());
    case 4:
        return isSigned ? as(int32_t()) : as(uint32_t());
    case 8:
        return as(int64_t());
    default:
        return fallback;
    }
}

/// Raises CKxGenTLErrorException when a function failed.
inline void CheckGenTL(CKxGenTLLib& lib, GenTL::GC_ERROR error, const char* function, const char* object)
{
    if (error != GenTL::GC_ERR_SUCCESS)
        throw KX_GENTL_ERROR_EXCEPTION(&lib, static_cast<GenTL::GC_ERROR_LIST>(error), function,
                                       "%d = %s of '%s'", error, function, object);
}

} // namespace Detail
} // namespace KxApi
