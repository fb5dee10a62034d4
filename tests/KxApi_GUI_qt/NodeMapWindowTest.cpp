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
#include <QSpinBox>
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

TEST_F(NodeMapWindow, KeepsSettingsAndFeaturesTheSame)
{
    using Wnd = IKxNodeMapDisplayWnd;
    const struct
    {
        const char* szFeature;
        bool (Wnd::*pGet)() const;
        void (Wnd::*pSet)(bool);
        bool bFirst;
    } rows[] = {
        {"AlphabeticMode", &Wnd::GetAlphabeticMode, &Wnd::SetAlphabeticMode, false},
        {"EnablePolling", &Wnd::GetEnablePolling, &Wnd::SetEnablePolling, false},
        {"EnableFilter", &Wnd::GetEnableFilter, &Wnd::SetEnableFilter, false},
        {"EnableRegularExpressionFilter", &Wnd::GetEnableRegularExpression, &Wnd::SetEnableRegularExpression,
         false},
        {"VisibleAlphabeticMode", &Wnd::GetVisibleAlphabeticMode, &Wnd::SetVisibleAlphabeticMode, true},
        {"VisibleExpand", &Wnd::GetVisibleExpand, &Wnd::SetVisibleExpand, true},
        {"VisibleCollapse", &Wnd::GetVisibleCollapse, &Wnd::SetVisibleCollapse, true},
        {"VisibleRefresh", &Wnd::GetVisibleRefresh, &Wnd::SetVisibleRefresh, true},
        {"VisiblePolling", &Wnd::GetVisiblePolling, &Wnd::SetVisiblePolling, true},
        {"VisibleVisibility", &Wnd::GetVisibleVisibility, &Wnd::SetVisibleVisibility, true},
        {"VisibleDescriptionSampleCode", &Wnd::GetVisibleDescriptionSampleCode,
         &Wnd::SetVisibleDescriptionSampleCode, true},
        {"VisibleDescription", &Wnd::GetVisibleDescription, &Wnd::SetVisibleDescription, true},
        {"VisibleFilter", &Wnd::GetVisibleFilter, &Wnd::SetVisibleFilter, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(((*m_pWnd).*row.pGet)(), row.bFirst) << row.szFeature;
        if (row.szFeature != std::string("EnableFilter"))
            m_pWnd->SetEnableFilter(true); // without it the expression's feature isn't available
        EXPECT_EQ(Bool(row.szFeature), row.bFirst) << row.szFeature;
        ((*m_pWnd).*row.pSet)(!row.bFirst);
        EXPECT_EQ(Bool(row.szFeature), !row.bFirst) << row.szFeature;
        GenApi::CBooleanPtr(&Node(row.szFeature))->SetValue(row.bFirst);
        EXPECT_EQ(((*m_pWnd).*row.pGet)(), row.bFirst) << row.szFeature;
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

TEST_F(NodeMapWindow, ShowsAndFollowsItsTools)
{
    m_pWnd->SetVisibleCollapse(false); // not before the show
    ShowMap("Category Root { pFeature C }\nCategory C { pFeature I }\nInteger I { Value 1 }");
    EXPECT_TRUE(Find<QWidget>("tbtnExpandAllFalse").isVisible());
    EXPECT_FALSE(Find<QWidget>("txtFilter").isVisible());
    const struct
    {
        const char* szFeature;
        const char* szTool;
    } rows[] = {{"VisibleAlphabeticMode", "tbtnAlphabeticFalse"},
                {"VisibleExpand", "tbtnExpandAllTrue"},
                {"VisibleCollapse", "tbtnExpandAllFalse"},
                {"VisibleRefresh", "tbtnRefresh"},
                {"VisiblePolling", "chkPolling"},
                {"VisibleVisibility", "cmbVisibility"},
                {"VisibleFilter", "chkRegex"},
                {"VisibleDescription", "txtDescription"}};
    for (const auto& row : rows) {
        for (const bool bVisible : {true, false}) {
            GenApi::CBooleanPtr(&Node(row.szFeature))->SetValue(bVisible);
            EXPECT_EQ(Find<QWidget>(row.szTool).isVisible(), bVisible) << row.szFeature;
        }
        GenApi::CBooleanPtr(&Node(row.szFeature))->SetValue(true);
    }
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
