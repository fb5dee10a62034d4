// SPDX-License-Identifier: Apache-2.0
// Base for ports that programs write themselves.
#pragma once

#include <GenApi/GenApiLinkage.h>
#include <GenApi/INode.h>
#include <GenApi/IPortConstruct.h>
#include <GenApi/IPortRecorder.h>

namespace GenApi
{

/// A port that is its own implementation. Derived classes give access mode, Read and Write; the node map
/// calls them with its lock held. Programs connect it by INodeMap::Connect.
class GENAPI_DECL CPortImpl : public IPortConstruct, public IPortReplay
{
public:
    CPortImpl();
    ~CPortImpl() override;

    EAccessMode GetAccessMode() const override = 0;
    void Read(void* pBuffer, int64_t Address, int64_t Length) override = 0;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override = 0;

    /// Called by the port node that this one has been connected to; null when it has been let go.
    void SetPortImpl(IPort* pPort) override;
    /// No: what passes is not swapped.
    EYesNo GetSwapEndianess() override;
    /// Writes all of a list to this port.
    void Replay(IPortWriteList* pPortRecorder, bool Invalidate = true) override;
    /// Invalidates the port node that this one is connected to, and fires its callbacks; harmless while there
    /// is none.
    void InvalidateNode();

protected:
    INode* m_pNode; ///< the port node, null if there is none
};

} // namespace GenApi
