// SPDX-License-Identifier: Apache-2.0
// An open device.
#pragma once

#include <Base/GCString.h>
#include <KxApi_TL/IKxCallback.h>
#include <KxApi_TL/IKxReleasable.h>
#include <KxApi_TL/KxApi_TLLinkage.h>

#include <cstdint>

namespace KxApi
{

struct IKxDeviceInfo;
struct IKxInterface;
struct IKxPort;
struct IKxStreamReleasable;

/// What a device is opened for; the numbers are GenTL's.
enum EKxDeviceAccess_t : int32_t
{
    KxDeviceAccess_ReadOnly = 2,  ///< to read its features; others may control it
    KxDeviceAccess_Control = 3,   ///< to control it and to acquire images; others may read its features
    KxDeviceAccess_Exclusive = 4, ///< as before, with nobody else allowed in
};

/// Callbacks of a device by their types; the parameter of both is an IKxDeviceErrorParam.
enum EKxDeviceCallback_t : uint32_t
{
    KxDeviceCallback_Lost = 1,  ///< the device doesn't answer any more; comes once
    KxDeviceCallback_Error = 2, ///< the producer told of an error, or an event of the device couldn't be used
};

/// What went wrong with a device.
struct IKxDeviceErrorParam : IKxCallbackParamBase
{
    /// A code of GenTL::GC_ERROR_LIST, GC_ERR_ERROR when there is none better.
    virtual int32_t GetError() const = 0;
    virtual GenICam::gcstring GetDescription() const = 0;

protected:
    ~IKxDeviceErrorParam() = default;
};

/// An open device. Any thread.
///
/// Events of the device are taken in from the first GetINodeMap of the port on whose nodes they act: of the
/// remote port features that changed by themselves (their nodes are invalidated), features that the producer
/// wants changed (they are set), and events with data (ports of nodes with an EventID get them); of the local
/// port the module's own events. Node callbacks that these fire run in a thread of the device's, the
/// callbacks of EKxDeviceCallback_t there or in a thread of one of its streams; neither must release the
/// device, nor what keeps it open.
struct IKxDevice : IKxRegisterCallback
{
    virtual IKxInterface* GetIKxInterface() const = 0;
    /// What was known of the device before it was opened, as of the last UpdateDeviceList.
    virtual const IKxDeviceInfo* GetIKxDeviceInfo() const = 0;
    virtual EKxDeviceAccess_t GetAccess() const = 0;

    /// The device itself: the features of the camera. Opened read-only, its nodes can't be written, which
    /// raises AccessException.
    virtual IKxPort* GetIKxRemotePort() = 0;
    /// What the producer knows of the device, with settings of the connection.
    virtual IKxPort* GetIKxLocalPort() = 0;

    /// Number of streams; 0 for a device without images. Raises CKxGenTLErrorException.
    virtual uint32_t GetStreamCount() const = 0;
    /// Opens a stream, which the caller gives back by Release and which keeps the device open. A stream is
    /// open once at a time: a second opening raises CKxGenTLErrorException with GC_ERR_RESOURCE_IN_USE.
    /// Raises also OutOfRangeException.
    virtual IKxStreamReleasable* OpenIKxStream(uint32_t nIndex) = 0;

    /// Whether the device was found not to answer any more. It then wants to be released, and to be opened
    /// anew once it is back. Found are errors that the producer tells of, and while images are awaited, a
    /// look once a second whether its registers still can be read.
    virtual bool IsLost() const = 0;

protected:
    ~IKxDevice() = default;
};

/// The form that the factory returns. Release closes the device when none of its streams is open any more.
struct IKxDeviceReleasable : IKxDevice, IKxReleasable
{
protected:
    ~IKxDeviceReleasable() = default;
};

/// Opens a device, which keeps its system open. Any thread.
/// @param pInterface,pDeviceInfo of a system of CreateIKxSystem or OpenIKxSystems. The device needn't be in
/// the interface's list any more.
/// Raises CKxGenTLErrorException when the producer refuses: with GC_ERR_RESOURCE_IN_USE when this process has
/// the device open, GC_ERR_ACCESS_DENIED when others have or it can't be reached. Raises also
/// InvalidArgumentException for null, for a device of another interface and for an unknown access,
/// LogicalErrorException when the SDK is not started.
KXAPI_TL_API IKxDeviceReleasable* CreateIKxDevice(IKxInterface* pInterface, const IKxDeviceInfo* pDeviceInfo,
                                                  EKxDeviceAccess_t eAccess);

} // namespace KxApi
