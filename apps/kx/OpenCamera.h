// SPDX-License-Identifier: Apache-2.0
// The camera that a command names, opened, and the node map of it that the command works on.
#pragma once

#include "Cameras.h"

#include <GenApi/GenApi.h>
#include <KxApi_TL/IKxStream.h>

#include <string>

namespace CLI
{
class App;
}

namespace Kx
{

/// Which node map of which camera.
struct CameraOptions
{
    std::string camera;
    std::string module = "remote";

    /// Declares the camera and --module on a command.
    void AddTo(CLI::App& command);

    /// Whether the features are those of what lies before any camera.
    bool IsBeforeCameras() const { return module == "interface" || module == "system"; }
};

/// An open camera, or, for the features of interface and system, what leads to it, which needs no open
/// camera. Closes everything in its destructor.
class OpenCamera
{
public:
    /// Instead of an access: to control the camera, or read-only while others control it.
    static constexpr auto kControlIfFree = static_cast<KxApi::EKxDeviceAccess_t>(0);

    /// Raises RuntimeException that tells which cameras there are, or what keeps this one from being opened.
    OpenCamera(const CameraOptions& options, KxApi::EKxDeviceAccess_t access);

    /// Not with features of interface or system.
    KxApi::IKxDevice& Device() { return *m_device; }

    /// Node map of the module that the options name. Raises RuntimeException when it can't be had.
    GenApi::INodeMap& Map() { return *m_pMap; }
    /// Its port.
    KxApi::IKxPort& Port() { return *m_pPort; }

private:
    KxApi::IKxPort* FindPort(const CameraOptions& options, KxApi::EKxDeviceAccess_t access);

    KxApps::Cameras m_cameras; // outlives the device
    KxApps::Device m_device;
    KxApi::CKxAutoPtr<KxApi::IKxStreamReleasable, KxApi::IKxStream> m_stream; // when its map is asked for
    KxApi::IKxPort* m_pPort = nullptr;
    GenApi::INodeMap* m_pMap = nullptr;
};

} // namespace Kx
