// SPDX-License-Identifier: Apache-2.0
// A device for tests: memory behind a port that notes every access and can be made to misbehave.
#pragma once

#include <Base/GCException.h>
#include <GenApi/IPort.h>

#include <cstdint>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace KxTest
{

/// Bytes that are 0 until written. Node maps call it under their lock, so one map needs no lock here.
class FakePort : public GenApi::IPort
{
public:
    using Bytes = std::vector<uint8_t>;

    GenApi::EAccessMode mode = GenApi::RW;
    mutable int modeQueries = 0;
    /// Runs at each access before the memory is touched; what it throws leaves the access.
    std::function<void()> onRead, onWrite;

    GenApi::EAccessMode GetAccessMode() const override
    {
        ++modeQueries;
        return mode;
    }

    void Read(void* pBuffer, int64_t address, int64_t length) override
    {
        Note('r', address, length);
        if (onRead)
            onRead();
        for (int64_t i = 0; i < length; ++i)
            static_cast<uint8_t*>(pBuffer)[i] = At(address, i);
    }

    void Write(const void* pBuffer, int64_t address, int64_t length) override
    {
        Note('w', address, length);
        if (onWrite)
            onWrite();
        for (int64_t i = 0; i < length; ++i)
            At(address, i) = static_cast<const uint8_t*>(pBuffer)[i];
    }

    /// Changes the memory as a device does by itself: without an access.
    void Put(int64_t address, const Bytes& bytes)
    {
        for (size_t i = 0; i < bytes.size(); ++i)
            At(address, static_cast<int64_t>(i)) = bytes[i];
    }

    /// The memory, without an access.
    Bytes Peek(int64_t address, int64_t length)
    {
        Bytes bytes;
        for (int64_t i = 0; i < length; ++i)
            bytes.push_back(At(address, i));
        return bytes;
    }

    /// All accesses since the last call, such as "r10:4 w10:4": kind, address in hex, length.
    std::string TakeAccesses()
    {
        std::string accesses;
        accesses.swap(m_accesses);
        return accesses;
    }

private:
    static constexpr int64_t kMaxLength = 1 << 20;

    void Note(char kind, int64_t address, int64_t length)
    {
        char text[64];
        std::snprintf(text, sizeof text, "%s%c%llx:%lld", m_accesses.empty() ? "" : " ", kind,
                      static_cast<unsigned long long>(address), static_cast<long long>(length));
        m_accesses += text;
        if (length < 0 || length > kMaxLength)
            throw RUNTIME_EXCEPTION("The fake device has no %lld bytes", static_cast<long long>(length));
    }

    uint8_t& At(int64_t address, int64_t offset)
    {
        return m_memory[static_cast<uint64_t>(address) + static_cast<uint64_t>(offset)];
    }

    std::map<uint64_t, uint8_t> m_memory;
    std::string m_accesses;
};

} // namespace KxTest
