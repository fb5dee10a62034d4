// SPDX-License-Identifier: Apache-2.0
#include "FeatureNotes.h"

#include <mutex>
#include <set>

struct FeatureNotes::Shared
{
    std::mutex lock; // a leaf
    FeatureNotes* pReceiver = nullptr;
    std::set<GenApi::INode*> nodes;
};

FeatureNotes::FeatureNotes(std::function<void(GenApi::INode&)> changed)
    : m_changed(std::move(changed))
    , m_pShared(std::make_shared<Shared>())
{
    m_pShared->pReceiver = this;
}

FeatureNotes::~FeatureNotes()
{
    for (const GenApi::CallbackHandleType hCallback : m_vecCallbacks)
        GenApi::Deregister(hCallback);
    const std::lock_guard lock(m_pShared->lock);
    m_pShared->pReceiver = nullptr;
}

void FeatureNotes::Listen(GenApi::INode& node)
{
    m_vecCallbacks.push_back(GenApi::Register(
        &node,
        [pShared = m_pShared](GenApi::INode* pNode) {
            const std::lock_guard lock(pShared->lock);
            const bool bFirst = pShared->nodes.empty();
            pShared->nodes.insert(pNode);
            if (bFirst && pShared->pReceiver)
                QMetaObject::invokeMethod(
                    pShared->pReceiver, [pReceiver = pShared->pReceiver] { pReceiver->Deliver(); },
                    Qt::QueuedConnection);
        },
        GenApi::cbPostOutsideLock));
}

void FeatureNotes::Deliver()
{
    std::set<GenApi::INode*> nodes;
    {
        const std::lock_guard lock(m_pShared->lock);
        nodes.swap(m_pShared->nodes);
    }
    for (GenApi::INode* const pNode : nodes)
        m_changed(*pNode);
}
