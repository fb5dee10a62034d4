// SPDX-License-Identifier: Apache-2.0
// Base for ports of programs that take many writes in one go.
#pragma once

#include <GenApi/GenApiLinkage.h>
#include <GenApi/INode.h>
#include <GenApi/IPortConstruct.h>
#include <GenApi/IPortRecorder.h>

namespace GenApi
{

/// A stacked port that is its own implementation, as CPortImpl is one for single accesses.
class GENAPI_DECL CPortStackedImpl : public IPortStackedConstruct, public IPortStacked, public IPortReplay
{
public:
    CPortStackedImpl();
    ~CPortStackedImpl() override;

    EAccessMode GetAccessMode() const override = 0;
    void Read(void* pBuffer, int64_t Address, int64_t Length) override = 0;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override = 0;
    void Write(PORT_REGISTER_STACK_ENTRY* pEntries, size_t NumEntries) override = 0;

    /// Does nothing: there is nothing to hand the calls on to.
    void SetPortImpl(IPortStacked* pPort) override;
    /// Called by the port node that this one has been connected to; null when it has been let go.
    void Serve(INode* pNode);
    /// No: what passes is not swapped.
    EYesNo GetSwapEndianess() override;
    /// Writes all of a list to this port.
    void Replay(IPortWriteList* pPortRecorder, bool Invalidate = true) override;
    /// As CPortImpl::InvalidateNode.
    void InvalidateNode();

protected:
    INode* m_pNode; ///< the port node, null if there is none
};

} // namespace GenApi
