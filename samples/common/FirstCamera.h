// SPDX-License-Identifier: Apache-2.0
// What most samples begin with, so that each can show its own idea: the first camera and its images.
#pragma once

#include <GenApi/GenApi.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxDevice.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/IKxStream.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>

#include <GenTL/GenTL.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <utility>

namespace Samples
{

/// The first camera that nobody else uses, and its stream. The SDK has to be started before.
class FirstCamera
{
public:
    FirstCamera()
    {
        KxApi::OpenIKxSystems(m_systems); // one for each producer that is installed
        for (size_t s = 0; s < m_systems.GetSize(); ++s) {
            m_systems[s]->UpdateInterfaceList();
            for (uint32_t i = 0; i < m_systems[s]->GetInterfaceCount(); ++i) {
                if (Open(*m_systems[s]->GetIKxInterface(i)))
                    return;
            }
        }
        throw RUNTIME_EXCEPTION("there is no camera that can be opened");
    }

    KxApi::IKxStream& Stream() { return *m_stream; }
    /// The features of the camera.
    GenApi::INodeMap& Features() { return *m_device->GetIKxRemotePort()->GetINodeMap(); }

private:
    bool Open(KxApi::IKxInterface& interface)
    {
        interface.UpdateDeviceList();
        for (uint32_t d = 0; d < interface.GetDeviceCount(); ++d) {
            const KxApi::IKxDeviceInfo* const pInfo = interface.GetIKxDeviceInfo(d);
            if (pInfo->GetAccessStatus() != GenTL::DEVICE_ACCESS_STATUS_READWRITE)
                continue;
            m_device.Reset(KxApi::CreateIKxDevice(&interface, pInfo, KxApi::KxDeviceAccess_Control));
            m_stream.Reset(m_device->OpenIKxStream(0));
            return true;
        }
        return false;
    }

    KxApi::CIKxSystemPtrArray m_systems;
    KxApi::CKxAutoPtr<KxApi::IKxDeviceReleasable> m_device;
    KxApi::CKxAutoPtr<KxApi::IKxStreamReleasable> m_stream;
};

/// Hands each image of a stream to a function, in the stream's thread. What is wrong is printed.
class ForEachImage final : public KxApi::IKxStreamCallback
{
public:
    explicit ForEachImage(std::function<void(KxApi::IKxStreamImage&)> function)
        : m_function(std::move(function))
    {}
    void OnImage(KxApi::IKxStreamImage* pImage) override { m_function(*pImage); }
    void OnError(const GenICam::GenericException& e, bool) override
    {
        std::cerr << e.GetDescription() << "\n";
    }

private:
    const std::function<void(KxApi::IKxStreamImage&)> m_function;
};

/// The number of images after which a sample ends, its only argument; without one it runs until its window
/// is closed.
inline uint64_t ImagesOf(int argc, char** argv)
{
    const uint64_t nImages = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 0;
    return nImages > 0 ? nImages : KxApi::kKxEndless;
}

} // namespace Samples
