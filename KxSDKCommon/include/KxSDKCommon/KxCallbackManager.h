// SPDX-License-Identifier: Apache-2.0
// Keeps the callbacks that an application registered on an object, and calls them.
#pragma once

#include <Base/GCSynch.h>
#include <KxApi_TL/IKxCallback.h>
#include <KxSDKCommon/KxSDKCommonLinkage.h>

#include <map>

namespace KxApi
{

/// One registered callback.
class KXSDK_COMMON_API CKxCallbackEntry
{
public:
    explicit CKxCallbackEntry(IKxCallback* pCallback) noexcept
        : m_pCallback(pCallback)
    {}
    CKxCallbackEntry(const CKxCallbackEntry&) = delete;
    CKxCallbackEntry& operator=(const CKxCallbackEntry&) = delete;
    virtual ~CKxCallbackEntry();

    IKxCallback* Get() const noexcept { return m_pCallback; }

private:
    IKxCallback* const m_pCallback;
};

/// Callbacks of one object.
struct IKxCallbackManager : IKxRegisterCallback
{
    /// Calls all callbacks. An exception out of one of them ends the process.
    virtual void RunCallback(IKxCallbackParamBase* pParam) noexcept = 0;

protected:
    ~IKxCallbackManager() = default;
};

/// The manager that windows and transport objects hold. Any thread. The lock is recursive and held for a
/// whole run, so DeregisterCallback waits for a run in another thread; a callback may register and
/// deregister, itself included. Its end releases the callbacks that are left.
class KXSDK_COMMON_API CKxCallbackManager final : public IKxCallbackManager
{
public:
    CKxCallbackManager() = default;
    CKxCallbackManager(const CKxCallbackManager&) = delete;
    CKxCallbackManager& operator=(const CKxCallbackManager&) = delete;
    ~CKxCallbackManager();

    void* RegisterCallback(IKxCallback* pCallback) override;
    void DeregisterCallback(void* hCallback) override;

    /// In the order of the handles, which is not that of the registrations.
    void RunCallback(IKxCallbackParamBase* pParam) noexcept override;

    /// The lock of runs, for who has to hold another one during a run and must take this one first.
    GenICam::CLock& GetLock() KXGC_RETURN_CAPABILITY(m_lock) { return m_lock; }

private:
    GenICam::CLock m_lock;
    std::map<void*, CKxCallbackEntry*> m_mapEntries KXGC_GUARDED_BY(m_lock); // each by its own address
};

/// A parameter object of a fixed kind: `T` is the interface it has, which derives from IKxCallbackParamBase.
template <class T>
class CKxCallbackParamBase : public T
{
public:
    explicit CKxCallbackParamBase(uint32_t nType) noexcept
        : m_nType(nType)
    {}
    CKxCallbackParamBase(const CKxCallbackParamBase&) = delete;
    CKxCallbackParamBase& operator=(const CKxCallbackParamBase&) = delete;
    virtual ~CKxCallbackParamBase() = default;

    uint32_t GetCallbackType() const override { return m_nType; }

private:
    const uint32_t m_nType;
};

} // namespace KxApi
