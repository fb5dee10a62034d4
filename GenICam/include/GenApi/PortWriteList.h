// SPDX-License-Identifier: Apache-2.0
// A list of recorded writes in memory.
#pragma once

#include <Base/GCException.h>
#include <GenApi/IPortRecorder.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace GenApi
{

/// Keeps copies of what is written.
class CPortWriteList : public IPortWriteList
{
public:
    CPortWriteList()
        : m_Cookie(-1)
    {}
    CPortWriteList(const CPortWriteList&) = delete;
    CPortWriteList& operator=(const CPortWriteList&) = delete;

    void Write(const void* pBuffer, int64_t Address, int64_t Length) override
    {
        const uint8_t* const bytes = static_cast<const uint8_t*>(pBuffer);
        m_Writes.push_back(std::make_pair(Address, std::vector<uint8_t>(bytes, bytes + Length)));
    }
    void Replay(IPort* pPort) override
    {
        if (pPort == nullptr)
            throw INVALID_ARGUMENT_EXCEPTION("Writes can't be replayed to no port");
        for (const auto& write : m_Writes)
            pPort->Write(write.second.data(), write.first, static_cast<int64_t>(write.second.size()));
    }
    void SetCookie(const int64_t Value) override { m_Cookie = Value; }
    int64_t GetCookie() override { return m_Cookie; }

private:
    std::vector<std::pair<int64_t, std::vector<uint8_t>>> m_Writes;
    int64_t m_Cookie;
};

} // namespace GenApi
