// SPDX-License-Identifier: Apache-2.0
// The device selection window as a user sees it, with systems that do as they are told.
#pragma once

#include "FakeTransport.h"
#include "Support.h"

#include <KxApi_GUI/IKxDeviceSelectionWnd.h>

#include <QAbstractButton>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>
#include <QTreeWidget>
#include <memory>
#include <string>
#include <vector>

namespace KxTest
{

using DeviceWndPtr = KxApi::CIKxWndPtrT<KxApi::IKxDeviceSelectionWnd>;

class DeviceTest : public GuiTest
{
protected:
    DeviceTest()
        : m_pWnd(KxApi::CreateIKxWnd(KxApi::KxWindowType_DeviceSelection))
    {}

    // Before the systems go.
    void TearDown() override
    {
        if (m_pWnd)
            m_pWnd->Close();
        Pump();
    }

    FakeSystem& AddSystem(const char* name, int32_t vendor = KxApi::KxSystemVendor_Other)
    {
        m_systems.push_back(std::make_unique<FakeSystem>(name, vendor));
        return *m_systems.back();
    }

    /// Shows the window with these systems, whose lists are brought up to date first.
    void Open(const std::vector<FakeSystem*>& systems)
    {
        for (FakeSystem* const pSystem : systems) {
            pSystem->Update();
            m_pWnd->RegisterTargetIKxSystem(pSystem);
        }
        Show(*m_pWnd);
    }

    /// What the worker's search does when something changed.
    void TellOfChange()
    {
        QMetaObject::invokeMethod(WidgetOf(*m_pWnd), "onUpdateDeviceListSignal");
        Pump();
    }

    template <class Widget>
    Widget& Find(const char* name)
    {
        return *WidgetOf(*m_pWnd)->findChild<Widget*>(name);
    }
    QTreeWidget& Tree() { return Find<QTreeWidget>("treeDevice"); }
    QAbstractButton& Button(const char* name) { return Find<QAbstractButton>(name); }
    bool IsEnabled(const char* name) { return Button(name).isEnabled(); }

    /// The rows of the tree from top to bottom, indented by two spaces a level.
    std::vector<std::string> Rows()
    {
        std::vector<std::string> rows;
        for (QTreeWidgetItemIterator it(&Tree()); *it; ++it) {
            int depth = 0;
            for (const QTreeWidgetItem* p = (*it)->parent(); p; p = p->parent())
                ++depth;
            rows.push_back(std::string(static_cast<size_t>(2 * depth), ' ') + (*it)->text(0).toStdString());
        }
        return rows;
    }

    QTreeWidgetItem* Item(const char* text)
    {
        const auto items = Tree().findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
        return items.isEmpty() ? nullptr : items.first();
    }
    void Select(const char* text) { Tree().setCurrentItem(Item(text)); }
    void DoubleClick(const char* text)
    {
        const QPoint pos = Tree().visualItemRect(Item(text)).center();
        QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, pos);
        QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, {}, pos);
    }
    std::string Selected()
    {
        const auto items = Tree().selectedItems();
        return items.isEmpty() ? "" : items.first()->text(0).toStdString();
    }

    /// The lines of a table, such as "IP Address: 192.168.0.7 red"; black goes without saying.
    std::vector<std::string> Lines(const char* table)
    {
        std::vector<std::string> lines;
        const QTableWidget& widget = Find<QTableWidget>(table);
        for (int row = 0; row < widget.rowCount(); ++row) {
            const QColor color = widget.item(row, 1)->foreground().color();
            lines.push_back((widget.item(row, 0)->text() + ": " + widget.item(row, 1)->text() +
                             (color == Qt::black  ? ""
                              : color == Qt::red  ? " red"
                              : color == Qt::blue ? " blue"
                                                  : " ?"))
                                .toStdString());
        }
        return lines;
    }

    /// What was chosen: the names of interface and device, "-" for none.
    std::string Chosen()
    {
        KxApi::IKxInterface* pInterface = nullptr;
        const KxApi::IKxDeviceInfo* pDevice = nullptr;
        m_pWnd->GetSelectedDeviceInfo(&pInterface, &pDevice);
        return std::string(pInterface ? pInterface->GetIKxInterfaceInfo()->GetDisplayName().c_str() : "-") +
               " " + (pDevice ? pDevice->GetID().c_str() : "-");
    }

    static QLineEdit& Edit(const QWidget& dialog, const char* name)
    {
        return *dialog.findChild<QLineEdit*>(name);
    }
    static void Type(const QWidget& dialog, const char* name, const char* text)
    {
        Edit(dialog, name).selectAll();
        QTest::keyClicks(&Edit(dialog, name), text);
        if (!*text)
            QTest::keyClick(&Edit(dialog, name), Qt::Key_Delete);
    }
    static void Click(const QWidget& dialog, const char* name)
    {
        QTest::mouseClick(dialog.findChild<QAbstractButton*>(name), Qt::LeftButton);
    }

    std::vector<std::unique_ptr<FakeSystem>> m_systems;
    DeviceWndPtr m_pWnd;
};

} // namespace KxTest
