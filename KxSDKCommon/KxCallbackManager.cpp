// SPDX-License-Identifier: Apache-2.0
#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>
#include <KxSDKCommon/KxCallbackManager.h>

#include <memory>

namespace KxApi
{

CKxCallbackEntry::~CKxCallbackEntry() = default;

CKxCallbackManager::~CKxCallbackManager()
{
    for (const auto& [hCallback, pEntry] : m_mapEntries) {
        const std::unique_ptr<CKxCallbackEntry> entry(pEntry);
        entry->Get()->Release();
    }
}

void* CKxCallbackManager::RegisterCallback(IKxCallback* pCallback)
{
    if (!pCallback)
        throw INVALID_ARGUMENT_EXCEPTION("pCallback is NULL.");
    return GenICam::GuardBadAlloc([&]() -> void* {
        auto entry = std::make_unique<CKxCallbackEntry>(pCallback);
        const GenICam::AutoLock lock(m_lock);
        m_mapEntries.emplace(entry.get(), entry.get());
        return entry.release();
    });
}

void CKxCallbackManager::DeregisterCallback(void* hCallback)
{
    const GenICam::AutoLock lock(m_lock);
    const auto found = m_mapEntries.find(hCallback);
    if (found == m_mapEntries.end())
        throw INVALID_ARGUMENT_EXCEPTION("hCallback is invalid.");
    const std::unique_ptr<CKxCallbackEntry> entry(found->second);
    m_mapEntries.erase(found);
    entry->Get()->Release();
}

void CKxCallbackManager::RunCallback(IKxCallbackParamBase* pParam) noexcept
{
    const GenICam::AutoLock lock(m_lock);
    // By handle and not by iterator: a callback may take itself or others out.
    for (auto it = m_mapEntries.begin(); it != m_mapEntries.end();) {
        void* const hCallback = it->first;
        it->second->Get()->OnCallback(pParam);
        it = m_mapEntries.upper_bound(hCallback);
    }
}

} // namespace KxApi
