// SPDX-License-Identifier: Apache-2.0
#include "runtime/PortNode.h"

#include <GenApi/PortImpl.h>
#include <GenApi/PortStackedImpl.h>

namespace GenApi
{
namespace
{

/// Takes a dying implementation off its node, which must not call it any more.
void Leave(INode* node, const IPort& port)
{
    if (const auto portNode = dynamic_cast<KxGenApi::PortNode*>(node))
        portNode->Release(port);
}

void ReplayTo(IPort& port, INode* node, IPortWriteList* list, bool invalidate)
{
    if (list != nullptr)
        list->Replay(&port);
    if (invalidate && node != nullptr)
        node->InvalidateNode();
}

} // namespace

CPortImpl::CPortImpl()
    : m_pNode(nullptr)
{}

CPortImpl::~CPortImpl() { Leave(m_pNode, *this); }

void CPortImpl::SetPortImpl(IPort* pPort) { m_pNode = dynamic_cast<INode*>(pPort); }

EYesNo CPortImpl::GetSwapEndianess() { return No; }

void CPortImpl::Replay(IPortWriteList* pPortRecorder, bool Invalidate)
{
    ReplayTo(*this, m_pNode, pPortRecorder, Invalidate);
}

void CPortImpl::InvalidateNode()
{
    if (m_pNode != nullptr)
        m_pNode->InvalidateNode();
}

CPortStackedImpl::CPortStackedImpl()
    : m_pNode(nullptr)
{}

CPortStackedImpl::~CPortStackedImpl() { Leave(m_pNode, *this); }

void CPortStackedImpl::SetPortImpl(IPortStacked*) {}

void CPortStackedImpl::Serve(INode* pNode) { m_pNode = pNode; }

EYesNo CPortStackedImpl::GetSwapEndianess() { return No; }

void CPortStackedImpl::Replay(IPortWriteList* pPortRecorder, bool Invalidate)
{
    ReplayTo(*this, m_pNode, pPortRecorder, Invalidate);
}

void CPortStackedImpl::InvalidateNode()
{
    if (m_pNode != nullptr)
        m_pNode->InvalidateNode();
}

} // namespace GenApi
