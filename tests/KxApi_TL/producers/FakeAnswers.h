// SPDX-License-Identifier: Apache-2.0
// How fake producers answer questions for infos.
#pragma once

#include <GenTL/GenTL.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <map>
#include <string>

namespace KxTest
{

/// An answer to an info command: an error, or bytes of a type.
struct FakeInfo
{
    int32_t error = 0;
    int32_t type = 0;
    std::string bytes;
};

template <class T>
FakeInfo Told(T value, int32_t type)
{
    return {0, type, std::string(reinterpret_cast<const char*>(&value), sizeof(value))};
}
inline FakeInfo ToldSize(size_t value) { return Told<size_t>(value, GenTL::INFO_DATATYPE_SIZET); }
inline FakeInfo ToldU64(uint64_t value) { return Told<uint64_t>(value, GenTL::INFO_DATATYPE_UINT64); }
inline FakeInfo ToldBool(bool value) { return Told<bool>(value, GenTL::INFO_DATATYPE_BOOL8); }
inline FakeInfo ToldText(const std::string& text) { return {0, GenTL::INFO_DATATYPE_STRING, text + '\0'}; }
inline FakeInfo Untold() { return {GenTL::GC_ERR_NOT_AVAILABLE, 0, ""}; }

using FakeInfos = std::map<int32_t, FakeInfo>;

inline GenTL::GC_ERROR Answer(const FakeInfo& info, GenTL::INFO_DATATYPE* type, void* buffer, size_t* size)
{
    if (info.error != GenTL::GC_ERR_SUCCESS)
        return info.error;
    if (type)
        *type = info.type;
    if (buffer && *size < info.bytes.size())
        return GenTL::GC_ERR_BUFFER_TOO_SMALL;
    if (buffer)
        std::memcpy(buffer, info.bytes.data(), info.bytes.size());
    *size = info.bytes.size();
    return GenTL::GC_ERR_SUCCESS;
}

/// The first of the infos that has the command.
inline GenTL::GC_ERROR AnswerBy(std::initializer_list<const FakeInfos*> infos, int32_t command,
                                GenTL::INFO_DATATYPE* type, void* buffer, size_t* size)
{
    for (const FakeInfos* const candidates : infos) {
        if (const auto place = candidates->find(command); place != candidates->end())
            return Answer(place->second, type, buffer, size);
    }
    return GenTL::GC_ERR_NOT_AVAILABLE;
}

} // namespace KxTest
