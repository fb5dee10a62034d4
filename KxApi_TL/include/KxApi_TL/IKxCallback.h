// SPDX-License-Identifier: Apache-2.0
// Callbacks: how the SDK tells an application of events.
#pragma once

#include <cstdint>

namespace KxApi
{

/// What happened. Lives during the call only; the type tells which derived interface it has.
struct IKxCallbackParamBase
{
    /// Number of the kind of event.
    virtual uint32_t GetCallbackType() const = 0;

protected:
    ~IKxCallbackParamBase() = default;
};

/// The application's receiver of events.
struct IKxCallback
{
    /// One event. Runs in the thread in which the event arises, with the lock of the registering object held.
    /// It must not throw: an exception that leaves it ends the process.
    virtual void OnCallback(IKxCallbackParamBase* pParam) = 0;

    /// The SDK gives the object back, after which no call comes; usually it deletes itself.
    virtual void Release() = 0;

protected:
    ~IKxCallback() = default;
};

/// An object that events come from.
struct IKxRegisterCallback
{
    /// Takes the callback over until DeregisterCallback or the object's end, and returns the handle for
    /// DeregisterCallback. Any thread. Raises InvalidArgumentException for null, BadAllocException.
    virtual void* RegisterCallback(IKxCallback* pCallback) = 0;

    /// Gives the callback back by its Release. Any thread; waits for the end of a run that is under way in
    /// another one, so that no call comes afterwards. Raises InvalidArgumentException for a handle that isn't
    /// registered.
    virtual void DeregisterCallback(void* hCallback) = 0;

protected:
    ~IKxRegisterCallback() = default;
};

} // namespace KxApi
