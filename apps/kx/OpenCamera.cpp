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
        .add_option("CAMERA", camera, "ID, user-defined name, serial number or model, as kx list shows them")
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

} // namespace

OpenCamera::OpenCamera(const CameraOptions& options, EKxDeviceAccess_t access)
{
    const KxApps::Camera camera = m_cameras.Find(options.camera);
    m_device = KxApps::Cameras::Open(camera, Possible(access, camera));
    m_pMap = FindMap(options.module);
    if (!m_pMap)
        throw RUNTIME_EXCEPTION("%s has no node map of the module '%s'", options.camera.c_str(),
                                options.module.c_str());
}

GenApi::INodeMap* OpenCamera::FindMap(const std::string& module)
{
    if (module == "remote")
        return m_device->GetIKxRemotePort()->GetINodeMap();
    if (module == "local")
        return m_device->GetIKxLocalPort()->GetINodeMap();
    if (module == "interface")
        return m_device->GetIKxInterface()->GetIKxPort()->GetINodeMap();
    if (module == "system")
        return m_device->GetIKxInterface()->GetIKxSystem()->GetIKxPort()->GetINodeMap();
    m_stream.Reset(m_device->OpenIKxStream(0));
    return m_stream->GetIKxPort()->GetINodeMap();
}

} // namespace Kx
