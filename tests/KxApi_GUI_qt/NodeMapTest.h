// SPDX-License-Identifier: Apache-2.0
// A node-map window over a fake device.
#pragma once

#include "Support.h"
#include "TestMap.h"
#include "nodemap/NodeMapPropertyGridCtrl_qt.h"

#include <QLabel>
#include <QTest>
#include <QTreeWidgetItemIterator>
#include <QWidget>
#include <memory>
#include <stdexcept>

namespace KxTest
{

class NodeMapTest : public GuiTest
{
protected:
    /// The window over the root category of a map in the short notation, shown unless there is none.
    explicit NodeMapTest(std::string_view outline = {})
        : m_pWnd(KxApi::CreateIKxWnd(KxApi::KxWindowType_NodeMapDisplay))
    {
        m_log.Watch(*m_pWnd);
        m_pWnd->SetPosition(0, 0, 500, 900);
        if (!outline.empty())
            ShowMap(outline);
    }
    void ShowMap(std::string_view outline)
    {
        try {
            m_pMap = std::make_unique<TestMap>(outline);
        } catch (const GenICam::GenericException& e) {
            throw std::logic_error(e.what()); // the test's own mistake
        }
        m_hRoot = m_pWnd->RegisterINode(&m_pMap->Get("Root"), "");
        ShowWnd();
    }
    void ShowWnd()
    {
        m_pWnd->Show(nullptr, KxApi::KxWindowMode_Modaless);
        Settle();
    }
    ~NodeMapTest() override
    {
        m_pWnd->Close();
        Pump();
    }

    QWidget& Dialog() const { return *WidgetOf(*m_pWnd); }
    KxApi::CNodeMapQtPropertyGridCtrl& Grid() const
    {
        return *Dialog().findChild<KxApi::CNodeMapQtPropertyGridCtrl*>();
    }
    void Settle() const
    {
        Pump(); // what is on the screen has its place
        Pump();
        EXPECT_TRUE(PumpUntil([this] { return IsSettled(); }));
        Pump();
    }
    /// Whether all that is on the screen was read.
    bool IsSettled() const
    {
        for (QTreeWidgetItemIterator it(&Grid()); *it; ++it) {
            const KxApi::CCustomPropertyGridProperty_Base* const pProperty = Grid().PropertyOf(*it);
            if (pProperty && pProperty->isVisible() && pProperty->IsUpdateRequested())
                return false;
        }
        return !Grid().IsFilling();
    }

    /// The rows as the user sees them, level by level: "Name", "..Name below".
    std::string Rows() const
    {
        std::string rows;
        for (QTreeWidgetItemIterator it(&Grid()); *it; ++it) {
            int nDepth = 0;
            bool bHidden = false;
            for (const QTreeWidgetItem* p = *it; p; p = p->parent()) {
                bHidden = bHidden || p->isHidden();
                nDepth += p->parent() ? 1 : 0;
            }
            if (!bHidden)
                rows += (rows.empty() ? "" : "|") + std::string(static_cast<size_t>(2 * nDepth), '.') +
                        (*it)->text(0).toStdString();
        }
        return rows;
    }
    QTreeWidgetItem* Row(const char* szText) const
    {
        const auto listRows = Grid().findItems(szText, Qt::MatchExactly | Qt::MatchRecursive);
        if (listRows.isEmpty())
            throw std::logic_error(std::string("no such row: ") + szText);
        return listRows.first();
    }
    KxApi::CCustomPropertyGridProperty_Base& Property(const char* szText) const
    {
        return *Grid().PropertyOf(Row(szText));
    }
    /// The editor in a row, null when there is none of that class, or a label is shown in its place.
    template <class Editor>
    Editor* Find(const char* szText) const
    {
        Editor* const pEditor = Property(szText).findChild<Editor*>();
        return pEditor && !pEditor->isHidden() ? pEditor : nullptr;
    }
    template <class Editor>
    Editor& Get(const char* szText) const
    {
        Editor* const pEditor = Find<Editor>(szText);
        if (!pEditor)
            throw std::logic_error(std::string("no such editor: ") + szText);
        return *pEditor;
    }
    /// The text in place of an editor.
    std::string Label(const char* szText) const
    {
        const QLabel* const pLabel = Find<QLabel>(szText);
        return pLabel ? pLabel->text().toStdString() : "(none)";
    }

    CEventLog m_log;
    std::unique_ptr<TestMap> m_pMap;
    void* m_hRoot = nullptr; ///< of its registration
    KxApi::CIKxWndPtrT<KxApi::IKxNodeMapDisplayWnd> m_pWnd;
};

} // namespace KxTest
