// SPDX-License-Identifier: Apache-2.0
// The registers of a window by their addresses.
#pragma once

#include "frame/KxRegisterParam_qt.h"

#include <GenApi/IPort.h>

#include <cstdint>
#include <initializer_list>
#include <map>

namespace KxApi
{

/// Finds registers. Filled while the window is made and not changed afterwards; then any thread.
class CKxRegister
{
public:
    /// Enters a register, which isn't owned. A second one at the same address is dropped.
    void Register(IKxRegisterParam& param) { m_mapParams.emplace(param.GetAddress(), &param); }
    void Register(std::initializer_list<IKxRegisterParam*> params)
    {
        for (IKxRegisterParam* const pParam : params)
            Register(*pParam);
    }

    /// Reads from the register at an address; false when there is none.
    /// @param[in,out] pnLength bytes wanted, then bytes done. Raises what the register raises.
    bool mRead(unsigned char* pBuffer, int64_t nAddress, int64_t* pnLength) const;
    bool mWrite(const unsigned char* pBuffer, int64_t nAddress, int64_t* pnLength) const;

private:
    IKxRegisterParam* Find(int64_t nAddress) const;

    std::map<int64_t, IKxRegisterParam*> m_mapParams;
};

/// Splits an access to a port into accesses to its registers. `access` gets the offset within the access, the
/// address and the bytes left, and tells whether there was a register, with the bytes done. Where there is
/// none, the rest of the 32-bit word is passed over.
template <class Access>
void ForEachRegister(int64_t nAddress, int64_t nLength, Access access)
{
    constexpr int64_t kWord = 4;
    for (int64_t nOffset = 0; nOffset < nLength;) {
        int64_t nDone = nLength - nOffset;
        if (!access(nOffset, nAddress + nOffset, &nDone))
            nDone = kWord - ((nAddress + nOffset) & (kWord - 1));
        nOffset += nDone;
    }
}

} // namespace KxApi
