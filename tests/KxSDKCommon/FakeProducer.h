// SPDX-License-Identifier: Apache-2.0
// A producer with one port, as a table of functions; one at a time, since the functions have no object.
#pragma once

#include <KxApi_TL/CKxGenTLLib.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

namespace KxTest
{

class FakeProducer
{
public:
    KxApi::CKxGenTLLib lib;

    std::string url;
    std::string memory; ///< from kAddress on
    GenTL::GC_ERROR nURLError = GenTL::GC_ERR_SUCCESS;
    GenTL::GC_ERROR nReadError = GenTL::GC_ERR_SUCCESS;
    GenTL::GC_ERROR nLastError = GenTL::GC_ERR_SUCCESS;
    std::string lastErrorText;
    size_t nClaimedSize = 0; ///< told in place of the true size of a text, unless 0
    int nReads = 0;

    static constexpr uint64_t kAddress = 0x10000;
    void* Port() { return this; }

    FakeProducer()
    {
        s_pCurrent = this;
        lib.GCGetPortURL = [](GenTL::PORT_HANDLE hPort, char* sURL, size_t* piSize) {
            auto& self = *static_cast<FakeProducer*>(hPort);
            return self.nURLError != GenTL::GC_ERR_SUCCESS ? self.nURLError
                                                           : self.Text(self.url, sURL, piSize);
        };
        lib.GCGetLastError = [](GenTL::GC_ERROR* piErrorCode, char* sText, size_t* piSize) {
            *piErrorCode = s_pCurrent->nLastError;
            return s_pCurrent->Text(s_pCurrent->lastErrorText, sText, piSize);
        };
        lib.GCReadPort = [](GenTL::PORT_HANDLE hPort, uint64_t iAddress, void* pBuffer, size_t* piSize) {
            return static_cast<FakeProducer*>(hPort)->Read(iAddress, pBuffer, piSize);
        };
    }
    FakeProducer(const FakeProducer&) = delete;
    FakeProducer& operator=(const FakeProducer&) = delete;
    ~FakeProducer() { s_pCurrent = nullptr; }

    /// Publishes a file.
    void Publish(const std::string& name, const std::string& content)
    {
        memory = content;
        char szNumbers[64];
        std::snprintf(szNumbers, sizeof(szNumbers), ";%llX;%zx", static_cast<unsigned long long>(kAddress),
                      content.size());
        url = "local:" + name + szNumbers;
    }

private:
    GenTL::GC_ERROR Text(const std::string& text, char* pBuffer, size_t* piSize) const
    {
        const size_t nSize = nClaimedSize != 0 ? nClaimedSize : text.size() + 1;
        if (pBuffer && *piSize < nSize)
            return GenTL::GC_ERR_BUFFER_TOO_SMALL;
        if (pBuffer)
            std::memcpy(pBuffer, text.c_str(), std::min(nSize, text.size() + 1));
        *piSize = nSize;
        return GenTL::GC_ERR_SUCCESS;
    }

    GenTL::GC_ERROR Read(uint64_t nAddress, void* pBuffer, size_t* piSize)
    {
        ++nReads;
        if (nReadError != GenTL::GC_ERR_SUCCESS)
            return nReadError;
        if (nAddress < kAddress || nAddress - kAddress + *piSize > memory.size())
            return GenTL::GC_ERR_INVALID_ADDRESS;
        std::memcpy(pBuffer, memory.data() + (nAddress - kAddress), *piSize);
        return GenTL::GC_ERR_SUCCESS;
    }

    static inline FakeProducer* s_pCurrent = nullptr;
};

} // namespace KxTest
