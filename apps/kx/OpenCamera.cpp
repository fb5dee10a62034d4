// SPDX-License-Identifier: Apache-2.0
#include "OpenCamera.h"

#include <KxApi_TL/IKxPort.h>

#include <CLI/CLI.hpp>
#include <GenTL/GenTL.h>

using namespace KxApi;

namespace Kx
{

void CameraOptions::AddTo(CLI::App& command)
{
    command
        .add_option(
            "CAMERA", camera,
            "ID, user-defined name, serial number or model, as kx list shows them; for --module interface "
            "or system also the ID of an interface")
        ->required();
    command
        .add_option("--module", module,
                    "Whose features: the camera's own (remote), or those of what leads to it")
        ->check(CLI::IsMember({"remote", "local", "stream", "interface", "system"}))
        ->capture_default_str();
}

namespace
{

EKxDeviceAccess_t Possible(EKxDeviceAccess_t access, const KxApps::Camera& camera)
{
    if (access != OpenCamera::kControlIfFree)
        return access;
    return camera.pInfo->GetAccessStatus() == GenTL::DEVICE_ACCESS_STATUS_READWRITE ? KxDeviceAccess_Control
                                                                                    : KxDeviceAccess_ReadOnly;
}

IKxInterface& FindInterface(const KxApps::Cameras& cameras, const std::string& name)
{
    for (const KxApps::Cameras::SystemEntry& system : cameras.Systems())
        for (const KxApps::Cameras::InterfaceEntry& entry : system.interfaces)
            if (entry.pInterface->GetIKxInterfaceInfo()->GetID() == name.c_str())
                return *entry.pInterface;
    return *cameras.Find(name).pInterface;
}

} // namespace

OpenCamera::OpenCamera(const CameraOptions& options, EKxDeviceAccess_t access)
{
    m_pPort = FindPort(options, access);
    m_pMap = m_pPort->GetINodeMap();
    if (!m_pMap)
        throw RUNTIME_EXCEPTION("%s has no node map of the module '%s'", options.camera.c_str(),
                                options.module.c_str());
}

IKxPort* OpenCamera::FindPort(const CameraOptions& options, EKxDeviceAccess_t access)
{
    if (options.IsBeforeCameras()) {
        IKxInterface& interface = FindInterface(m_cameras, options.camera);
        return options.module == "interface" ? interface.GetIKxPort()
                                             : interface.GetIKxSystem()->GetIKxPort();
    }
    const KxApps::Camera camera = m_cameras.Find(options.camera);
    // Streams of a camera that is open for reading can't be opened.
    const bool needsMore = options.module == "stream" && access == KxDeviceAccess_ReadOnly;
    m_device = KxApps::Cameras::Open(camera, Possible(needsMore ? kControlIfFree : access, camera));
    if (options.module == "remote")
        return m_device->GetIKxRemotePort();
    if (options.module == "local")
        return m_device->GetIKxLocalPort();
    m_stream.Reset(m_device->OpenIKxStream(0));
    return m_stream->GetIKxPort();
}

} // namespace Kx
