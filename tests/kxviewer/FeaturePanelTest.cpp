// SPDX-License-Identifier: Apache-2.0
// What the viewer has around the node-map window: search, favourites, changes, feature sets, texts to copy.
#include "FeaturePanel.h"

#include "Support.h"
#include "TestMap.h"
#include "ViewerSettings.h"
#include "nodemap/NodeMapPropertyGridCtrl_qt.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <memory>

namespace KxTest
{
namespace
{

using testing::ElementsAre;

constexpr char kCamera[] =
    "Category Root { pFeature Width; pFeature Gain; pFeature Mode; pFeature Name; pFeature Secret; pFeature "
    "No; pFeature Follower }\n"
    "Integer Width { Visibility Expert; Streamable Yes; Value 640; Min 1; Max 1024; Representation Linear }\n"
    "Float Gain { Value 1; Min 0; Max 10 }\n"
    "Enumeration Mode { EnumEntry Off { Value 0 } EnumEntry On { Value 1 } Value 0 }\n"
    "StringReg Name { Address 0x100; Length 16; AccessMode RW; pPort Device }\n"
    "Integer Secret { DisplayName Wide Secret; Visibility Invisible; Value 1 }\n"
    "Integer Follower { ImposedAccessMode RO; pValue Width }\n"
    "Integer Zero { Value 0 } Integer No { pIsImplemented Zero; Value 1 }";

class Panel : public GuiTest
{
protected:
    Panel()
        : m_map(kCamera)
    {
        ViewerSettings::UseFile(m_folder.filePath("viewer.conf"));
        QCoreApplication::setOrganizationName("Tests");
        KxApi::processEventGUI(false, 0); // makes the application object
        m_pPanel = std::make_unique<FeaturePanel>(nullptr);
        m_pPanel->resize(500, 800);
        m_pPanel->show();
        ShowModel("Model");
    }
    void ShowModel(const char* szModel)
    {
        m_pPanel->SetMaps({{"Camera", szModel, "camera 1", "remote", [this] { return m_map.map._Ptr; }}});
        Pump();
        const auto& grid = *m_pPanel->findChild<KxApi::CNodeMapQtPropertyGridCtrl*>();
        EXPECT_TRUE(PumpUntil([&] { return grid.topLevelItemCount() > 0 && !grid.IsFilling(); }));
    }
    template <class Widget>
    Widget& Find(const char* szName) const
    {
        return *m_pPanel->findChild<Widget*>(szName);
    }
    QTreeWidget& Grid() const
    {
        return *static_cast<QWidget*>(m_pPanel->Window().GetWindowHandle())->findChild<QTreeWidget*>();
    }
    static std::vector<std::string> Texts(const QTreeWidget& tree)
    {
        std::vector<std::string> texts;
        for (QTreeWidgetItemIterator it(&const_cast<QTreeWidget&>(tree)); *it; ++it) {
            std::string text;
            for (int i = 0; i < tree.columnCount(); ++i)
                text += (i > 0 ? "|" : "") + (*it)->text(i).toStdString();
            texts.push_back(text);
        }
        return texts;
    }
    /// Chooses in the menu of a feature's row.
    void Choose(const char* szFeature, const char* szEntry)
    {
        QTreeWidgetItem* const pRow =
            Grid().findItems(szFeature, Qt::MatchExactly | Qt::MatchRecursive).last();
        QTimer::singleShot(0, [&] {
            auto* const pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            for (QAction* const pAction : pMenu->actions()) {
                if (pAction->text() == szEntry)
                    pAction->trigger();
            }
            pMenu->close();
        });
        emit Grid().customContextMenuRequested(Grid().visualItemRect(pRow).center());
    }
    /// Presses a button that asks for a file, and answers.
    void PressAndAnswer(const char* szTip, const QString& strFile)
    {
        QTimer::singleShot(0, [&] {
            auto* const pDialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            pDialog->findChild<QLineEdit*>("fileNameEdit")->setText(strFile);
            QTest::keyClick(pDialog->findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
        });
        for (QToolButton* const pButton : m_pPanel->findChildren<QToolButton*>()) {
            if (pButton->toolTip() == szTip)
                return pButton->click();
        }
        ADD_FAILURE() << "no such button: " << szTip;
    }

    QTemporaryDir m_folder;
    TestMap m_map;
    std::unique_ptr<FeaturePanel> m_pPanel;
};

TEST_F(Panel, FindsAndShowsWhatTheLevelHides)
{
    m_pPanel->Window().SetVisibility(GenApi::Beginner);
    Find<QLineEdit>("featureSearch").setText("WI");
    auto& found = Find<QTreeWidget>("foundFeatures");
    EXPECT_THAT(Texts(found), ElementsAre("Width|hidden: Expert", "Wide Secret|hidden: Invisible"));
    emit found.itemActivated(found.topLevelItem(0), 0);
    EXPECT_EQ(m_pPanel->Window().GetVisibility(), GenApi::Expert);
    EXPECT_EQ(Grid().currentItem()->text(0), "Width");
    EXPECT_FALSE(Grid().currentItem()->isHidden());
    EXPECT_FALSE(m_pPanel->ShowFeature("Secret"));
    EXPECT_FALSE(m_pPanel->ShowFeature("No"));
    Find<QLineEdit>("featureSearch").setText("");
    EXPECT_FALSE(found.isVisible());
}

TEST_F(Panel, KeepsFavouritesForEachModel)
{
    const auto favourites = [this] {
        const auto listGroups = Grid().findItems("Favourites", Qt::MatchExactly);
        return listGroups.isEmpty() ? QString("none") : listGroups.first()->child(0)->text(0);
    };
    Choose("Gain", "Add to favourites");
    EXPECT_EQ(favourites(), "Gain");
    ShowModel("Other");
    EXPECT_EQ(favourites(), "none");
    ShowModel("Model");
    EXPECT_EQ(favourites(), "Gain");
    Choose("Gain", "Remove from favourites");
    EXPECT_EQ(favourites(), "none");
}

TEST_F(Panel, ListsChangesAndTakesThemBack)
{
    auto& changed = Find<QTreeWidget>("changedFeatures");
    int64_t nWidth = 640;
    // The panel notes the values bit by bit; what is changed before that counts as the first value.
    EXPECT_TRUE(PumpUntil([&] {
        nWidth = nWidth % 1000 + 1;
        m_map.Int("Width") = nWidth;
        return changed.topLevelItemCount() == 1; // what only follows isn't among them
    }));
    const std::string before = changed.topLevelItem(0)->text(1).toStdString();
    EXPECT_EQ(changed.topLevelItem(0)->text(0), "Width");
    EXPECT_TRUE(PumpUntil([&] { return changed.topLevelItem(0)->text(2) == QString::number(nWidth); }));
    emit changed.itemDoubleClicked(changed.topLevelItem(0), 0);
    EXPECT_EQ(m_map.Value("Width").ToString().c_str(), before);
    EXPECT_TRUE(PumpUntil([&] { return changed.topLevelItemCount() == 0; }));
}

TEST_F(Panel, CopiesRowsAsTextForShellsAndPrograms)
{
    m_map.Get<GenApi::IString>("Name").SetValue("it's \"A\"");
    const struct
    {
        const char* szFeature;
        const char* szLine;
        const char* szCpp;
    } rows[] = {
        {"Width", "kx set 'camera 1' 'Width=640'",
         "GenApi::CIntegerPtr(pINodeMap->GetNode(\"Width\"))->SetValue(640);"},
        {"Gain", "kx set 'camera 1' 'Gain=1'",
         "GenApi::CFloatPtr(pINodeMap->GetNode(\"Gain\"))->SetValue(1);"},
        {"Mode", "kx set 'camera 1' 'Mode=Off'",
         "GenApi::CValuePtr(pINodeMap->GetNode(\"Mode\"))->FromString(\"Off\");"},
        {"Name", "kx set 'camera 1' 'Name=it'\\''s \"A\"'",
         "GenApi::CStringPtr(pINodeMap->GetNode(\"Name\"))->SetValue(\"it's \\\"A\\\"\");"},
    };
    for (const auto& row : rows) {
        Choose(row.szFeature, "Copy as kx line");
        EXPECT_EQ(QApplication::clipboard()->text().toStdString(), row.szLine);
        Choose(row.szFeature, "Copy as C++");
        EXPECT_EQ(QApplication::clipboard()->text().toStdString(), row.szCpp);
    }
}

TEST_F(Panel, SavesAndLoadsASetOfFeatures)
{
    const QString strFile = m_folder.filePath("set.txt");
    PressAndAnswer("Save all features in a file", strFile);
    m_map.Int("Width") = 17;
    PressAndAnswer("Set the features of a file", strFile);
    EXPECT_EQ(m_map.Int("Width").GetValue(), 640);
}

} // namespace
} // namespace KxTest
