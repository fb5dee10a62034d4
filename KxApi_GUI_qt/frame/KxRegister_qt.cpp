// SPDX-License-Identifier: Apache-2.0
#include "frame/KxRegister_qt.h"

#include <algorithm>
#include <iterator>

namespace KxApi
{
namespace
{

/// Cuts a length to what the register has done; false when that is nothing.
bool CutToRegister(const IKxRegisterParam& param, int64_t nAddress, int64_t* pnLength)
{
    if (param.GetStep() != 0) {
        *pnLength = param.GetStep();
        return true;
    }
    const int64_t nDone = std::min(nAddress + *pnLength, param.GetAddress() + param.GetLength()) - nAddress;
    if (nDone < 1)
        return false;
    *pnLength = nDone;
    return true;
}

} // namespace

IKxRegisterParam* CKxRegister::Find(int64_t nAddress) const
{
    const auto behind = m_mapParams.upper_bound(nAddress);
    if (behind == m_mapParams.begin())
        return nullptr;
    IKxRegisterParam* const pParam = std::prev(behind)->second;
    const bool bInside = nAddress < pParam->GetAddress() + pParam->GetLength();
    return bInside && pParam->Covers(nAddress) ? pParam : nullptr;
}

bool CKxRegister::mRead(unsigned char* pBuffer, int64_t nAddress, int64_t* pnLength) const
{
    IKxRegisterParam* const pParam = Find(nAddress);
    if (!pParam)
        return false;
    pParam->Read(pBuffer, nAddress, *pnLength);
    return CutToRegister(*pParam, nAddress, pnLength);
}

bool CKxRegister::mWrite(const unsigned char* pBuffer, int64_t nAddress, int64_t* pnLength) const
{
    IKxRegisterParam* const pParam = Find(nAddress);
    if (!pParam)
        return false;
    pParam->Write(pBuffer, nAddress, *pnLength);
    return pParam->TakesWrites() && CutToRegister(*pParam, nAddress, pnLength);
}

} // namespace KxApi
