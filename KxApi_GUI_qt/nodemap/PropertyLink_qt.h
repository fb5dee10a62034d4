// SPDX-License-Identifier: Apache-2.0
// The road from a node's callback to the widget that shows the node.
#pragma once

#include <GenApi/INode.h>

#include <QEvent>
#include <QThread>
#include <memory>
#include <mutex>

namespace KxApi
{

class CCustomPropertyGridProperty_Base;

/// Shared by a property and the callback at its node, since that may still run in another thread when it was
/// deregistered and the property is gone.
///
/// In the property's own thread the callback calls the property at once. Other threads leave one note for it,
/// however often they change the node: waiting for the GUI thread there could wait for ever, as that thread
/// may wait for the lock of the node map.
class CPropertyLink
{
public:
    /// What a note arrives as.
    static QEvent::Type NoteType();

    explicit CPropertyLink(CCustomPropertyGridProperty_Base& property);

    /// Registers at a node, and returns the handle of the callback.
    static GenApi::CallbackHandleType Register(GenApi::INode& node,
                                               const std::shared_ptr<CPropertyLink>& pLink);

    /// After this the property isn't touched any more. Its thread.
    void Cut();
    /// The note has arrived; the next change leaves another one. The property's thread.
    void TakeNote();

private:
    void OnNode(GenApi::INode* pNode);

    QThread* const m_pThread;
    std::mutex m_lock; // of this library's locks a leaf; Qt's own are taken with it held
    CCustomPropertyGridProperty_Base* m_pProperty; // null when cut
    bool m_bNoted = false;
};

} // namespace KxApi
