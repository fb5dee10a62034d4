// SPDX-License-Identifier: Apache-2.0
// An open system over the fake camera, and receivers of what comes from it.
#pragma once

#include "Producers.h"
#include "TestCameras.h"
#include "ThreadCount.h"

#include <GenApi/GenApi.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxDevice.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/IKxStream.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace KxTest
{

/// What was noted, in whatever threads.
template <class T>
class Notes
{
public:
    void Add(T note)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_notes.push_back(std::move(note));
    }
    std::vector<T> All() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_notes;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<T> m_notes;
};

/// Remembers the images it got, and does with them what a test wants.
class Receiver final : public KxApi::IKxStreamCallback
{
public:
    void OnImage(KxApi::IKxStreamImage* pImage) override
    {
        m_ids.Add(pImage->GetFrameID());
        if (onImage)
            onImage(*pImage);
    }
    void OnError(const GenICam::GenericException& error, bool bEnded) override
    {
        if (bEnded)
            m_hasEnded = true;
        m_errors.Add(error.GetDescription());
        if (onError)
            onError(bEnded);
    }

    std::vector<uint64_t> IDs() const { return m_ids.All(); }
    std::vector<std::string> Errors() const { return m_errors.All(); }
    bool HasEnded() const { return m_hasEnded; }
    bool Gets(size_t nImages) const
    {
        return Eventually([&] { return IDs().size() >= nImages; });
    }
    bool GetsErrors(size_t nErrors) const
    {
        return Eventually([&] { return Errors().size() >= nErrors; });
    }

    std::function<void(KxApi::IKxStreamImage&)> onImage;
    std::function<void(bool)> onError;

private:
    Notes<uint64_t> m_ids;
    Notes<std::string> m_errors;
    std::atomic<bool> m_hasEnded{false};
};

/// Remembers the callbacks of a device, each as its type and text.
class DeviceLog final : public KxApi::IKxCallback
{
public:
    void OnCallback(KxApi::IKxCallbackParamBase* pParam) override
    {
        const auto* const pError = dynamic_cast<KxApi::IKxDeviceErrorParam*>(pParam);
        m_entries.Add((pParam->GetCallbackType() == KxApi::KxDeviceCallback_Lost ? "lost " : "error ") +
                      std::to_string(pError->GetError()) + " " + pError->GetDescription().c_str());
    }
    void Release() override {}

    std::vector<std::string> Entries() const { return m_entries.All(); }

private:
    Notes<std::string> m_entries;
};

class CameraFixture : public testing::Test
{
protected:
    void SetUp() override
    {
        m_system.Reset(KxApi::CreateIKxSystem(Fake("Camera").c_str()));
        m_system->UpdateInterfaceList();
        m_interface = m_system->GetIKxInterface(0);
        m_interface->UpdateDeviceList();
    }
    void TearDown() override
    {
        EXPECT_TRUE(Eventually([this] { return ThreadCount() <= m_nThreads; })) << "a thread is left";
    }

    DevicePtr Open(KxApi::EKxDeviceAccess_t eAccess = KxApi::KxDeviceAccess_Control) const
    {
        return DevicePtr(KxApi::CreateIKxDevice(m_interface, m_interface->GetIKxDeviceInfo(0), eAccess));
    }
    static StreamPtr OpenStream(const DevicePtr& device) { return StreamPtr(device->OpenIKxStream(0)); }
    static GenApi::CIntegerPtr Integer(KxApi::IKxPort* pPort, const char* szName)
    {
        return pPort->GetINodeMap()->GetNode(szName);
    }

    const size_t m_nThreads = ThreadCount();
    const LoadedProducer m_producer{"Camera"};
    FakeCamera* const camera = &m_producer.Camera();
    KxApi::CKxApiAutoInitTerm m_sdk;
    SystemPtr m_system;
    KxApi::IKxInterface* m_interface = nullptr;
};

/// With the camera open, and its stream.
class StreamFixture : public CameraFixture
{
protected:
    void SetUp() override
    {
        CameraFixture::SetUp();
        m_device = Open();
        m_stream = OpenStream(m_device);
    }
    void TearDown() override
    {
        m_stream.Reset();
        m_device.Reset();
        CameraFixture::TearDown();
    }
    ImagePtr Fetch() const { return ImagePtr(m_stream->FetchImage(kLongMs)); }
    /// What the fetch of an image raises; empty when it gives one.
    std::string FetchError() const
    {
        try {
            return Fetch() ? "" : "nothing fetched";
        } catch (const GenICam::GenericException& e) {
            return e.GetDescription();
        }
    }

    DevicePtr m_device;
    StreamPtr m_stream;
};

} // namespace KxTest
