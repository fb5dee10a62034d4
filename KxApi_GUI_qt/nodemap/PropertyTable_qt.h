// SPDX-License-Identifier: Apache-2.0
// Which property a node gets.
#pragma once

namespace GenApi
{
struct INode;
}
class QWidget;

namespace KxApi
{

class CCustomPropertyGridProperty_Base;
struct IKxNodeMapDisplayWndInside;
struct IPropertyCtrlEvent;

/// A new property for the node; null for kinds of nodes that have none. The node isn't read. GUI thread.
/// Raises LogicalErrorException for a node that isn't what it claims to be.
CCustomPropertyGridProperty_Base* MakeProperty(IKxNodeMapDisplayWndInside* pWnd, QWidget* pParent,
                                               GenApi::INode* pNode, IPropertyCtrlEvent* pEvent);

} // namespace KxApi
