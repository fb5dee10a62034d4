// SPDX-License-Identifier: Apache-2.0
#include "nodemap/PropertyLink_qt.h"

#include "nodemap/CustomPropertyGridProperty_Base_qt.h"

#include <GenApi/NodeCallback.h>

#include <QCoreApplication>

namespace KxApi
{

QEvent::Type CPropertyLink::NoteType()
{
    static const auto eType = static_cast<QEvent::Type>(QEvent::registerEventType());
    return eType;
}

CPropertyLink::CPropertyLink(CCustomPropertyGridProperty_Base& property)
    : m_pThread(property.thread())
    , m_pProperty(&property)
{}

GenApi::CallbackHandleType CPropertyLink::Register(GenApi::INode& node,
                                                   const std::shared_ptr<CPropertyLink>& pLink)
{
    return GenApi::Register(
        &node, [pLink](GenApi::INode* pNode) { pLink->OnNode(pNode); }, GenApi::cbPostOutsideLock);
}

void CPropertyLink::Cut()
{
    const std::lock_guard lock(m_lock);
    m_pProperty = nullptr;
}

void CPropertyLink::TakeNote()
{
    const std::lock_guard lock(m_lock);
    m_bNoted = false;
}

void CPropertyLink::OnNode(GenApi::INode* pNode)
{
    if (QThread::currentThread() == m_pThread) {
        if (m_pProperty) // written in this thread only
            m_pProperty->OnNodeCallback(pNode);
        return;
    }
    const std::lock_guard lock(m_lock);
    if (!m_pProperty || m_bNoted)
        return;
    m_bNoted = true;
    QCoreApplication::postEvent(m_pProperty, new QEvent(NoteType()));
}

} // namespace KxApi
