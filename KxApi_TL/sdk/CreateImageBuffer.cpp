// SPDX-License-Identifier: Apache-2.0
#include <Base/GCBadAlloc.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/KxApi_TL.h>
#include <KxSDKCommon/KxImageBuffer.h>

namespace KxApi
{

IKxImageBufferReleasable* CreateIKxImageBuffer(IKxAllocator* pAllocator)
{
    CheckKxApiInitialized();
    return GenICam::GuardBadAlloc([pAllocator] { return new CKxImageBuffer(pAllocator); });
}

} // namespace KxApi
