// SPDX-License-Identifier: Apache-2.0
// Handles that consumers hold.
#pragma once

#include "common/gentl/Error.h"

#include <KxSDKCommon/KxMutex.h>

#include <cstdint>
#include <map>
#include <memory>

namespace KxProducer
{

/// What a handle may stand for.
class CHandled
{
public:
    CHandled() = default;
    virtual ~CHandled() = default;
    CHandled(const CHandled&) = delete;
    CHandled& operator=(const CHandled&) = delete;

    void* GetHandle() const { return m_handle; }

private:
    friend class CHandles;
    void* m_handle = nullptr;
};

/// A handle is a number that is never given out twice, so that a stale one is noticed. Any thread.
class CHandles
{
public:
    void* Add(const std::shared_ptr<CHandled>& object)
    {
        const KxApi::CKxMutexLock lock(m_mutex);
        m_last += kStep;
        object->m_handle = reinterpret_cast<void*>(m_last);
        m_objects[m_last] = object;
        return object->m_handle;
    }

    void Remove(const CHandled& object)
    {
        const KxApi::CKxMutexLock lock(m_mutex);
        m_objects.erase(reinterpret_cast<uintptr_t>(object.m_handle));
    }

    /// The object of this kind; throws if the handle is none of that.
    template <class T>
    std::shared_ptr<T> Get(void* handle) const
    {
        std::shared_ptr<T> object = Find<T>(handle);
        if (!object)
            Fail(GenTL::GC_ERR_INVALID_HANDLE, "%p is no handle of the kind that is wanted", handle);
        return object;
    }

    template <class T>
    std::shared_ptr<T> Find(void* handle) const
    {
        const KxApi::CKxMutexLock lock(m_mutex);
        const auto place = m_objects.find(reinterpret_cast<uintptr_t>(handle));
        return place == m_objects.end() ? nullptr : std::dynamic_pointer_cast<T>(place->second);
    }

private:
    static constexpr uintptr_t kStep = 0x10;

    mutable KxApi::CKxMutex m_mutex;
    // A map keeps no memory when it is empty.
    std::map<uintptr_t, std::shared_ptr<CHandled>> m_objects KXGC_GUARDED_BY(m_mutex);
    uintptr_t m_last KXGC_GUARDED_BY(m_mutex) = 0x10000;
};

CHandles& Handles();

} // namespace KxProducer
