// SPDX-License-Identifier: Apache-2.0
#include "runtime/PortNode.h"

#include <GenApi/PortImpl.h>
#include <GenApi/PortStackedImpl.h>

namespace GenApi
{
namespace
{

void ReplayTo(IPort& port, INode* node, IPortWriteList* list, bool invalidate)
{
    const auto invalidateNode = [&] {
        if (invalidate && node != nullptr)
            node->InvalidateNode();
    };
    try {
        if (list != nullptr)
            list->Replay(&port);
    } catch (...) {
        invalidateNode(); // a part may have been written
        throw;
    }
    invalidateNode();
}

} // namespace

CPortImpl::CPortImpl()
    : m_pNode(nullptr)
{}

CPortImpl::~CPortImpl() { KxGenApi::PortNode::Release(*this); }

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

CPortStackedImpl::~CPortStackedImpl() { KxGenApi::PortNode::Release(*this); }

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
