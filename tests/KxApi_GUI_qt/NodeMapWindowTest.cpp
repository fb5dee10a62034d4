// SPDX-License-Identifier: Apache-2.0
// The node-map window's own features, tools and pages.
#include "NodeMapTest.h"
#include "SampleCodeMap.h"
#include "nodemap/KxDisplayNodeMapWnd_qt.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTextEdit>
#include <QToolButton>

/// The sample code of all kinds of nodes, as the pages have it.
void RunSampleCode(GenApi::INodeMap* pINodeMap);

namespace KxTest
{
namespace
{

using namespace KxApi;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class NodeMapWindow : public NodeMapTest
{
protected:
    GenApi::INode& Node(const char* szName) { return *m_pWnd->GetINodeMap()->GetNode(szName); }
    bool Bool(const char* szName) { return GenApi::CBooleanPtr(&Node(szName))->GetValue(); }
    template <class Tool>
    Tool& Find(const char* szName) const
    {
        return *Dialog().findChild<Tool*>(szName);
    }
    std::string Page(const char* szRow)
    {
        Grid().setCurrentItem(Row(szRow));
        return Dialog().findChild<QTextEdit*>("txtDescription")->toPlainText().toStdString();
    }
};

TEST_F(NodeMapWindow, KeepsSettingsFeaturesAndToolsTheSame)
{
    using Wnd = IKxNodeMapDisplayWnd;
    m_pWnd->SetVisibleCollapse(false); // not before the show
    ShowMap("Category Root { pFeature C }\nCategory C { pFeature I }\nInteger I { Value 1 }");
    EXPECT_TRUE(Find<QWidget>("tbtnExpandAllFalse").isVisible());
    m_pWnd->SetVisibleCollapse(true);
    const struct
    {
        const char* szFeature;
        bool (Wnd::*pGet)() const;
        void (Wnd::*pSet)(bool);
        bool bFirst;
        const char* szTool; ///< that it shows
    } rows[] = {
        {"AlphabeticMode", &Wnd::GetAlphabeticMode, &Wnd::SetAlphabeticMode, false, nullptr},
        {"EnablePolling", &Wnd::GetEnablePolling, &Wnd::SetEnablePolling, false, nullptr},
        {"EnableFilter", &Wnd::GetEnableFilter, &Wnd::SetEnableFilter, false, nullptr},
        {"EnableRegularExpressionFilter", &Wnd::GetEnableRegularExpression, &Wnd::SetEnableRegularExpression,
         false, nullptr},
        {"VisibleAlphabeticMode", &Wnd::GetVisibleAlphabeticMode, &Wnd::SetVisibleAlphabeticMode, true,
         "tbtnAlphabeticFalse"},
        {"VisibleExpand", &Wnd::GetVisibleExpand, &Wnd::SetVisibleExpand, true, "tbtnExpandAllTrue"},
        {"VisibleCollapse", &Wnd::GetVisibleCollapse, &Wnd::SetVisibleCollapse, true, "tbtnExpandAllFalse"},
        {"VisibleRefresh", &Wnd::GetVisibleRefresh, &Wnd::SetVisibleRefresh, true, "tbtnRefresh"},
        {"VisiblePolling", &Wnd::GetVisiblePolling, &Wnd::SetVisiblePolling, true, "chkPolling"},
        {"VisibleVisibility", &Wnd::GetVisibleVisibility, &Wnd::SetVisibleVisibility, true, "cmbVisibility"},
        {"VisibleDescriptionSampleCode", &Wnd::GetVisibleDescriptionSampleCode,
         &Wnd::SetVisibleDescriptionSampleCode, true, nullptr},
        {"VisibleDescription", &Wnd::GetVisibleDescription, &Wnd::SetVisibleDescription, true,
         "txtDescription"},
        {"VisibleFilter", &Wnd::GetVisibleFilter, &Wnd::SetVisibleFilter, false, "chkRegex"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.szFeature);
        EXPECT_EQ(((*m_pWnd).*row.pGet)(), row.bFirst);
        if (row.szFeature != std::string("EnableFilter"))
            m_pWnd->SetEnableFilter(true); // without it the expression's feature isn't available
        const auto expect = [&](bool bValue) {
            EXPECT_EQ(((*m_pWnd).*row.pGet)(), bValue);
            EXPECT_EQ(Bool(row.szFeature), bValue);
            if (row.szTool) {
                EXPECT_EQ(Find<QWidget>(row.szTool).isVisible(), bValue);
            }
        };
        expect(row.bFirst);
        ((*m_pWnd).*row.pSet)(!row.bFirst);
        expect(!row.bFirst);
        GenApi::CBooleanPtr(&Node(row.szFeature))->SetValue(row.bFirst);
        expect(row.bFirst);
        m_pWnd->SetEnableFilter(false);
    }
    EXPECT_EQ(m_pWnd->GetVisibility(), GenApi::Guru);
    EXPECT_EQ(ErrorOf([&] { m_pWnd->SetVisibility(GenApi::Invisible); }),
              "eV = 3 must be equal or smaller than Max = 2");
    m_pWnd->SetFilterText(std::string(2000, 'x').c_str());
    EXPECT_EQ(GenApi::CStringPtr(&Node("FilterText"))->GetValue().size(), 1024U);
    m_pWnd->SetAlphabeticMode(true);
    EXPECT_FALSE(GenApi::IsWritable(&Node("Expand")));
}

TEST_F(NodeMapWindow, FollowsItsTools)
{
    ShowMap("Category Root { pFeature C }\nCategory C { pFeature I }\nInteger I { Value 1 }");
    m_pWnd->SetVisibleFilter(true);
    QTest::mouseClick(&Find<QToolButton>("tbtnExpandAllFalse"), Qt::LeftButton);
    EXPECT_FALSE(Row("C")->isExpanded());
    QTest::mouseClick(&Find<QToolButton>("tbtnExpandAllTrue"), Qt::LeftButton);
    EXPECT_TRUE(Row("C")->isExpanded());
    QTest::mouseClick(&Find<QToolButton>("tbtnAlphabeticTrue"), Qt::LeftButton);
    EXPECT_TRUE(m_pWnd->GetAlphabeticMode());
    EXPECT_FALSE(Find<QToolButton>("tbtnExpandAllTrue").isEnabled());
    Find<QComboBox>("cmbVisibility").setCurrentIndex(1);
    EXPECT_EQ(m_pWnd->GetVisibility(), GenApi::Expert);
    Find<QCheckBox>("chkFilter").click();
    QTest::keyClicks(&Find<QLineEdit>("txtFilter"), "abc");
    QTest::keyClick(&Find<QLineEdit>("txtFilter"), Qt::Key_Left);
    QTest::keyClicks(&Find<QLineEdit>("txtFilter"), "x");
    EXPECT_EQ(m_pWnd->GetFilterText(), "abxc");
    EXPECT_EQ(Find<QLineEdit>("txtFilter").cursorPosition(), 3);

    QStringList listMenu;
    for (const QAction* const pAction : Find<QMenuBar>("").actions().first()->menu()->actions())
        listMenu << pAction->text();
    EXPECT_EQ(listMenu.join(","),
              "&Alphabetic Mode,&Expand,&Collapse,&Refresh,&Polling,&Visibility,&Description,,"
              "&Status Bar");
}

TEST_F(NodeMapWindow, OffersSampleCodeThatRuns)
{
    const TestMap map(kSampleMap);
    EXPECT_EQ(ErrorOf([&] { RunSampleCode(map.map._Ptr); }), "");
}

TEST_F(NodeMapWindow, TellsAllAboutTheChosenFeature)
{
    ShowMap(
        "Category Root { pFeature Sel; pFeature I; pFeature F; pFeature E; pFeature H; pFeature C; pFeature "
        "P }\n"
        "Enumeration Sel { EnumEntry Red { Value 0 } Value 0; pSelected I; pSelected F }\n"
        "Integer I { ToolTip a < b & %1; IsDeprecated Yes; Value 5; Min 0; Max 9; Inc 1; "
        "Unit us; Representation Linear }\n"
        "Float F { Value 1.5; Min 0; Max 2; DisplayPrecision 1 }\n"
        "Enumeration E { ImposedAccessMode RO; EnumEntry A { Value 0 } EnumEntry B { Value 1 } Value 1 }\n"
        "Integer H { Value 255; Min 0; Max 999; Representation HexNumber }\n"
        "Command C { Value 0; CommandValue 1 }\nIntReg P { at 0x10 1 RO; PollingTime 20; Little }");
    const std::string page = Page("I (us) [Sel]");
    for (const char* const szText :
         {"I (Depricated)", "a < b & %1", "IInteger", "Read and Write", "Value Information", "Maximum\n9",
          "Unit\nus", "//Selector\nGenApi::CEnumerationPtr pSel(pINodeMap->GetNode(\"Sel\"));",
          "GenApi::CEnumEntryPtr pRed = pSel->GetEntryByName(\"Red\");", "pIInteger->SetValue(nValue);"})
        EXPECT_THAT(page, HasSubstr(szText));
    EXPECT_THAT(Page("F[Sel]"),
                AllOf(HasSubstr("Value\n1.5"), HasSubstr("double dblF = pIFloat->GetValue();"),
                      Not(HasSubstr("Polling Time"))));
    EXPECT_THAT(Page("E"), AllOf(HasSubstr("Display Name: B"), Not(HasSubstr("Display Name: A")),
                                 Not(HasSubstr("//Selector"))));
    EXPECT_THAT(Page("P"), HasSubstr("20[ms]"));
    EXPECT_THAT(Page("H"), HasSubstr("255 (0xff)"));
    EXPECT_THAT(Page("C"), AllOf(HasSubstr("pICommand->Execute();"), Not(HasSubstr("Value Information"))));
    m_pWnd->SetVisibleDescriptionSampleCode(false);
    EXPECT_THAT(Page("H"), Not(HasSubstr("C++ Sample Code")));
}

} // namespace
} // namespace KxTest
