// SPDX-License-Identifier: Apache-2.0
// Which nodes still have to get a row.
#pragma once

#include "nodemap/ICDisplayNodeMapDlgParent.h"

#include <GenApi/GenApi.h>

#include <QString>
#include <cstddef>
#include <vector>

class QTreeWidgetItem;

namespace KxApi
{

/// The walk through the registered nodes and what is below them, which can be left and taken up again. GUI
/// thread.
class CGridFilling
{
public:
    /// A node and the row that its own goes below, null for the top.
    struct CNext
    {
        GenApi::INode* pNode;
        QTreeWidgetItem* pParent;
    };

    /// Begins anew.
    void Start(std::vector<CNodeInfo> vecNodes);
    void Stop();
    bool HasWork() const { return !m_vecLevels.empty() || m_nEntry < m_vecEntries.size(); }

    /// Whether the next one is a registered node; then TakeEntry yields it, otherwise TakeNode a feature.
    bool IsAtEntry() const { return m_vecLevels.empty(); }
    CNodeInfo TakeEntry() { return m_vecEntries[m_nEntry++]; }
    CNext TakeNode();

    /// The features of a category come next. Categories never hold themselves: node maps see to it.
    void Push(const GenApi::ICategory& category, QTreeWidgetItem* pParent);
    /// Categories that are being walked through.
    size_t Depth() const { return m_vecLevels.size(); }
    /// Leaves those behind that are done.
    void DropFinished();

private:
    struct CLevel
    {
        QTreeWidgetItem* pParent;
        GenApi::FeatureList_t features;
        size_t nNext;
    };

    std::vector<CNodeInfo> m_vecEntries;
    size_t m_nEntry = 0;
    std::vector<CLevel> m_vecLevels;
};

/// Whether a node has a row: not one that the device lacks. One that fails to tell has.
bool HasRow(GenApi::INode* pNode);

/// The text of a node's row: its name, the unit, and the selectors, inner ones first.
/// @param szName in place of the node's own; null for none. Raises LogicalErrorException for a node that
/// isn't what it claims to be.
QString RowText(GenApi::INode& node, const char* szName);

} // namespace KxApi
