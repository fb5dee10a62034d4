// SPDX-License-Identifier: Apache-2.0
// What tests of cameras share, whoever plays the camera.
#pragma once

#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxDevice.h>
#include <KxApi_TL/IKxStream.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxSDKCommon/KxApi_Exception.h>

#include <GenTL/GenTL.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <thread>

namespace KxTest
{

using SystemPtr = KxApi::CKxAutoPtr<KxApi::IKxSystemReleasable, KxApi::IKxSystem>;
using DevicePtr = KxApi::CKxAutoPtr<KxApi::IKxDeviceReleasable, KxApi::IKxDevice>;
using StreamPtr = KxApi::CKxAutoPtr<KxApi::IKxStreamReleasable, KxApi::IKxStream>;
using ImagePtr = KxApi::CKxAutoPtr<KxApi::IKxStreamImageReleasable, KxApi::IKxStreamImage>;

/// Far more than anything takes that works.
constexpr uint32_t kLongMs = 30000;

/// Waits until something holds; false when it never does.
inline bool Eventually(const std::function<bool()>& holds)
{
    for (uint32_t waited = 0; waited < kLongMs; ++waited) {
        if (holds())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

/// Code of the GenTL error that a call raises; 0 for none.
inline int32_t ErrorOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const KxApi::CKxGenTLErrorException& e) {
        return e.GetError();
    }
    return GenTL::GC_ERR_SUCCESS;
}

} // namespace KxTest
