// SPDX-License-Identifier: Apache-2.0
// The simulated cameras, as programs reach them.
#pragma once

#include "TestCameras.h"

#include <GenApi/GenApi.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>
#include <KxSDKCommon/KxApi_Exception.h>

#include <GenTL/GenTL.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

namespace KxTest
{

/// Interface and identifier of a camera.
struct Place
{
    const char *interface, *camera;
};
constexpr Place kMono = {"KxSim_U3V", "KX-U5M_1001"};
constexpr Place kBayer = {"KxSim_U3V", "KX-U5C_1002"};
constexpr Place kAllKinds = {"KxSim_U3V", "KX-U03N_1003"};
constexpr Place kColour = {"KxSim_GEV", "KX-G1C_2001"};
constexpr Place kPolarized = {"KxSim_GEV", "KX-G5P_2002"};
constexpr Place kElsewhere = {"KxSim_GEV", "KX-G1M_2003"};
constexpr Place kPolarizedBayer = {"KxSim_CXP", "KX-C5PC_3001"};
constexpr Place kRange = {"KxSim_CXP", "KX-C3D_3003"};
constexpr Place kRegions = {"KxSim_CXP", "KX-C2R_3004"};
constexpr Place kPlanar = {"KxSim_CXP", "KX-C1Y_3002"};

/// Cameras of its own: locks of other processes are those of the same folder for temporary files.
class Simulator : public testing::Test
{
protected:
    Simulator()
    {
        static const std::string kFolders = testing::TempDir(); // TMPDIR changes below
        m_folder = kFolders + "kxsim-XXXXXX";
        if (!mkdtemp(m_folder.data()))
            throw RUNTIME_EXCEPTION("There is no place for '%s'", m_folder.c_str());
        setenv("TMPDIR", m_folder.c_str(), 1);
        KxApi::Initialize();
    }
    ~Simulator() override
    {
        m_system.Reset();
        KxApi::Terminate();
        std::filesystem::remove_all(m_folder);
        for (const char* variable : {"KXSIM_UNPLUGGED", "KXSIM_TRUNCATED_XML"})
            unsetenv(variable);
    }

    KxApi::IKxSystem& System()
    {
        if (!m_system) {
            m_system.Reset(KxApi::CreateIKxSystem(KXSIM_PRODUCER));
            m_system->UpdateInterfaceList();
        }
        return *m_system;
    }

    KxApi::IKxInterface& Interface(const std::string& id)
    {
        for (uint32_t i = 0; i < System().GetInterfaceCount(); ++i) {
            KxApi::IKxInterface* const interface = System().GetIKxInterface(i);
            if (interface->GetIKxInterfaceInfo()->GetID() == id.c_str())
                return *interface;
        }
        throw RUNTIME_EXCEPTION("There is no interface '%s'", id.c_str());
    }

    /// As of a new look; null if the camera isn't there.
    const KxApi::IKxDeviceInfo* Find(const Place& place)
    {
        KxApi::IKxInterface& interface = Interface(place.interface);
        interface.UpdateDeviceList();
        for (uint32_t i = 0; i < interface.GetDeviceCount(); ++i) {
            if (interface.GetIKxDeviceInfo(i)->GetID() == place.camera)
                return interface.GetIKxDeviceInfo(i);
        }
        return nullptr;
    }

    DevicePtr Open(const Place& place, KxApi::EKxDeviceAccess_t access = KxApi::KxDeviceAccess_Control)
    {
        const KxApi::IKxDeviceInfo* const info = Find(place);
        if (!info)
            throw RUNTIME_EXCEPTION("There is no camera '%s'", place.camera);
        return DevicePtr(KxApi::CreateIKxDevice(&Interface(place.interface), info, access));
    }

    /// With a window so small that images are cheap.
    DevicePtr OpenSmall();

    void CloseSystem() { m_system.Reset(); }
    const std::string& Folder() const { return m_folder; }

private:
    std::string m_folder;
    SystemPtr m_system;
};

inline GenApi::INodeMap& Features(const DevicePtr& device)
{
    return *device->GetIKxRemotePort()->GetINodeMap();
}

/// Sets a feature by its text.
inline void Set(GenApi::INodeMap& map, const char* name, const std::string& value)
{
    GenApi::CValuePtr(map.GetNode(name))->FromString(value.c_str());
}
inline void Set(const DevicePtr& device, const char* name, const std::string& value)
{
    Set(Features(device), name, value);
}
inline std::string Get(GenApi::INodeMap& map, const char* name)
{
    return GenApi::CValuePtr(map.GetNode(name))->ToString().c_str();
}
inline std::string Get(const DevicePtr& device, const char* name) { return Get(Features(device), name); }
inline void Execute(GenApi::INodeMap& map, const char* name)
{
    GenApi::CCommandPtr(map.GetNode(name))->Execute();
}
inline void Execute(const DevicePtr& device, const char* name) { Execute(Features(device), name); }
inline double Number(const DevicePtr& device, const char* name)
{
    return GenApi::CFloatPtr(Features(device).GetNode(name))->GetValue();
}

inline DevicePtr Simulator::OpenSmall()
{
    DevicePtr device = Open(kAllKinds);
    Set(device, "Width", "64");
    Set(device, "Height", "16");
    return device;
}

/// Takes one image and shows it.
inline void WithImage(const DevicePtr& device, const std::function<void(KxApi::IKxStreamImage&)>& look)
{
    const StreamPtr stream(device->OpenIKxStream(0));
    stream->SetBufferCount(2);
    stream->StartAcquisition(nullptr, 1);
    const ImagePtr image(stream->FetchImage(kLongMs));
    ASSERT_TRUE(image) << "no image came";
    EXPECT_FALSE(image->IsIncomplete());
    look(*image);
}

} // namespace KxTest
