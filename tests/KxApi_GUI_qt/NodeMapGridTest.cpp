// SPDX-License-Identifier: Apache-2.0
// The rows of the node-map window: which there are, in which order, and which of them are shown.
#include "NodeMapTest.h"
#include "nodemap/RowFilter_qt.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <thread>

namespace KxTest
{
namespace
{

using namespace KxApi;

class NodeMapGrid : public NodeMapTest
{
protected:
    void SetAndSettle(bool bAlphabetic)
    {
        m_pWnd->SetAlphabeticMode(bAlphabetic);
        Settle();
    }
};

constexpr char kCamera[] =
    "Category Root { pFeature Analog; pFeature Image }\n"
    "Category Analog { DisplayName Analog Control; pFeature Sel; pFeature Gain; pFeature Missing }\n"
    "Category Image { pFeature Width; pFeature Depth; pFeature Test }\n"
    "Enumeration Sel { DisplayName Gain Selector; EnumEntry All { Value 0 } EnumEntry Red { Value 1 } Value "
    "0; "
    "pSelected Gain }\n"
    "Float Gain { Value 1; Min 0; Max 10; Unit dB }\n"
    "Integer No { Value 0 }\nInteger Missing { pIsImplemented No; Value 1 }\n"
    "Integer Width { Value 640; Min 1; Max 1024; Unit px; Representation Linear }\n"
    "Integer Depth { Visibility Expert; Value 8; Min 1; Max 16; Representation Linear }\n"
    "Integer Test { Visibility Guru; Value 8; Min 1; Max 16; Representation Linear }";

TEST_F(NodeMapGrid, ListsFeaturesInCategoriesOrByName)
{
    ShowMap(kCamera);
    const std::string tree =
        "Analog Control|..Gain Selector|..Gain (dB) [Gain Selector]|Image|..Width (px) |..Depth|"
        "..Test";
    EXPECT_EQ(Rows(), tree);
    SetAndSettle(true);
    EXPECT_EQ(Rows(), "Depth|Gain (dB) [Gain Selector]|Gain Selector|Test|Width (px) ");
    SetAndSettle(false);
    EXPECT_EQ(Rows(), tree);
    m_pWnd->SetVisibility(GenApi::Beginner);
    EXPECT_EQ(Rows(), "Analog Control|..Gain Selector|..Gain (dB) [Gain Selector]|Image|..Width (px) ");
    m_pWnd->SetVisibility(GenApi::Expert);
    EXPECT_EQ(Row("Depth")->isHidden(), false);
    EXPECT_EQ(Row("Test")->isHidden(), true);
}

TEST_F(NodeMapGrid, PutsWhatIsRegisteredUnderOneNameTogether)
{
    m_pMap = std::make_unique<TestMap>(kCamera);
    m_pWnd->RegisterINode(&m_pMap->Get("Analog"), "Camera");
    m_pWnd->RegisterINode(&m_pMap->Get("Image"), "Camera");
    m_pWnd->RegisterINode(&m_pMap->Get("Missing"), "Camera");
    m_pWnd->RegisterINode(nullptr, "");
    m_pWnd->RegisterINode(&m_pMap->Get("Width"), "Favourites");
    void* const hDepth = m_pWnd->RegisterINode(&m_pMap->Get("Depth"), "Favourites");
    m_pWnd->RegisterINode(&m_pMap->Get("Test"), "");
    ShowWnd();
    EXPECT_EQ(Rows(), "Camera|..Gain Selector|..Gain (dB) [Gain Selector]|..Width (px) |..Depth|..Test|"
                      "Favourites|..Width (px) |..Depth|Test");
    SetAndSettle(true);
    EXPECT_EQ(Rows(),
              "Depth|Depth|Gain (dB) [Gain Selector]|Gain Selector|Test|Test|Width (px) |Width (px) ");

    SetAndSettle(false);
    m_pWnd->DeregisterINode(hDepth);
    EXPECT_EQ(ErrorOf([&] { m_pWnd->DeregisterINode(hDepth); }), "hRegistered is invalid.");
    EXPECT_EQ(m_pWnd->GetRegisteredAndUnregisteredNodeCount(), 8U);
    m_pWnd->Refresh();
    Settle();
    EXPECT_EQ(Row("Favourites")->childCount(), 1);
}

TEST_F(NodeMapGrid, ShowsWhatTheFilterFindsWithTheRowsAbove)
{
    ShowMap(kCamera);
    m_pWnd->SetEnableFilter(true);
    const std::string all = Rows();
    const struct
    {
        const char* szText;
        bool bRegex;
        const char* szRows;
    } cases[] = {
        {"SELECTOR", false, "Analog Control|..Gain Selector|..Gain (dB) [Gain Selector]"},
        {"px", false, "Image|..Width (px) "},
        {"dept|wid", false, "Image|..Width (px) |..Depth"},
        {"depth|", false, "Image|..Depth"},
        {"^d|w.d", false, "Image|..Width (px) |..Depth"}, // with "|" the parts are expressions
        {"|", false, ""},
        {"(", false, "Analog Control|..Gain (dB) [Gain Selector]|Image|..Width (px) "},
        {"dep.*", true, "Image|..Depth"},
        {"epth", true, ""},
        {"(", true, ""},
        {"(((a{0,900}){0,900}){0,900})*b", true, ""},
        {"(.*)*(.*)*(.*)*(.*)*(.*)*x", true, ""},
    };
    for (const auto& c : cases) {
        m_pWnd->SetEnableRegularExpression(c.bRegex);
        m_pWnd->SetFilterText(c.szText);
        EXPECT_EQ(Rows(), c.szRows) << c.szText;
    }
    m_pWnd->SetFilterText("test");
    m_pWnd->SetVisibility(GenApi::Expert);
    EXPECT_EQ(Rows(), "");
    m_pWnd->SetVisibility(GenApi::Guru);
    m_pWnd->SetFilterText("");
    EXPECT_EQ(Rows(), all);
    EXPECT_EQ(Row("Depth")->foreground(0).color(), QColor(Qt::black));
}

TEST_F(NodeMapGrid, LeavesGroupsHiddenThatTheFilterHid)
{
    m_pMap = std::make_unique<TestMap>(kCamera);
    m_pWnd->RegisterINode(&m_pMap->Get("Width"), "Group");
    ShowWnd();
    m_pWnd->SetFilterText("nothing");
    m_pWnd->SetEnableFilter(true);
    m_pWnd->SetEnableFilter(false);
    EXPECT_TRUE(Row("Group")->isHidden());
    EXPECT_FALSE(Row("Width (px) ")->isHidden());
}

TEST_F(NodeMapGrid, ReadsRowsWhenTheyComeOnTheScreen)
{
    std::string outline = "Category Root { pFeature X0";
    for (int i = 1; i < 300; ++i)
        outline += "; pFeature X" + std::to_string(i);
    outline += " }\n";
    for (int i = 0; i < 300; ++i)
        outline += "Integer X" + std::to_string(i) + " { Value " + std::to_string(i) +
                   "; Min 0; Max 999; Representation Linear }\n";
    ShowMap(outline);
    EXPECT_EQ(Get<QSpinBox>("X0").value(), 0);
    EXPECT_FALSE(Find<QSpinBox>("X250"));
    Grid().scrollToItem(Row("X250"));
    Settle();
    EXPECT_EQ(Get<QSpinBox>("X250").value(), 250);
    m_pMap->Int("X0") = 77; // not on the screen
    Grid().scrollToTop();
    Settle();
    EXPECT_EQ(Get<QSpinBox>("X0").value(), 77);
    m_pMap->Int("X0") = 78;
    EXPECT_EQ(Get<QSpinBox>("X0").value(), 78);
}

TEST_F(NodeMapGrid, FollowsChangesOfOtherThreadsAndOfTheDeviceItself)
{
    ShowMap("Category Root { pFeature I; pFeature P; pFeature E }\nInteger I { Value 1; Min 0; Max 100000; "
            "Representation Linear }\n"
            "Integer P { pValue PReg; Min 0; Max 255; Representation Linear } IntReg PReg { at 0x10 1 RW; "
            "PollingTime 1000; Little }\n"
            "Enumeration E { EnumEntry Once { Value 1; IsSelfClearing Yes } EnumEntry Off { Value 0 } pValue "
            "EReg }\n"
            "IntReg EReg { at 0x20 1 RW; Little }");
    std::thread([&] {
        for (int i = 0; i <= 50000; ++i)
            m_pMap->Int("I") = i;
    }).join();
    EXPECT_TRUE(PumpUntil([&] { return Get<QSpinBox>("I").value() == 50000; }));

    m_pMap->Enum("E").SetIntValue(1);
    EXPECT_EQ(Get<QComboBox>("E").currentText(), "Once");
    m_pMap->port.Put(0x10, {5});
    m_pMap->port.Put(0x20, {0});
    m_pWnd->SetEnablePolling(true);
    EXPECT_TRUE(PumpUntil([&] { return Find<QSpinBox>("P")->value() == 5; }));
    EXPECT_TRUE(PumpUntil([&] { return Get<QComboBox>("E").currentText() == "Off"; }));
}

TEST_F(NodeMapGrid, LetsGoOfTheNodeMapWhenItIsClosed)
{
    ShowMap(kCamera);
    Get<QSpinBox>("Width (px) ").setFocus();
    m_pWnd->Close();
    m_pMap.reset();
    Pump();
    EXPECT_EQ(m_log.Count(KxGUICallbackType_Error), 0U);
    m_pWnd->DeregisterINode(m_hRoot);
    ShowMap(kCamera); // another one, as of a camera that has come back
    EXPECT_EQ(Get<QSpinBox>("Width (px) ").value(), 640);
}

TEST_F(NodeMapGrid, ChangesTheWindowThatItIsPartOf)
{
    m_pWnd->RegisterINode(m_pWnd->GetINodeMap()->GetNode("Root"), "");
    ShowWnd();
    Get<QComboBox>("Alphabetic Mode").setCurrentIndex(1); // which makes this very row anew
    Settle();
    EXPECT_TRUE(m_pWnd->GetAlphabeticMode());
    EXPECT_EQ(Get<QComboBox>("Alphabetic Mode").currentText(), "True");
    EXPECT_EQ(Label("Expand"), "Not Available");
    Get<QComboBox>("Visible Filter").setCurrentIndex(1);
    EXPECT_TRUE(Dialog().findChild<QLineEdit*>("txtFilter")->isVisible());
}

// Nodes and settings that many threads change while rows are made, filtered and closed.
TEST_F(NodeMapGrid, StandsChangesOfAllThreadsAtOnce)
{
    std::string outline =
        "Integer Root0 { Value 1 }\nInteger A { Value 1 }\nEnumeration E { EnumEntry Off { Value 0 } "
        "EnumEntry On { pIsAvailable A; Value 1 } Value 0 }\n";
    std::string features = "pFeature E";
    for (int i = 0; i < 100; ++i) {
        const std::string name = "I" + std::to_string(i);
        features += "; pFeature " + name;
        outline += "Integer " + name + " { pIsAvailable A; pValue R" + name +
                   "; Min 0; Max 1000; Representation Linear }\nIntReg R" + name + " { Address " +
                   std::to_string(i * 4) +
                   "; Length 4; AccessMode RW; pPort Device; PollingTime 1; Endianess "
                   "LittleEndian }\n";
    }
    m_pMap = std::make_unique<TestMap>("Category Root { " + features + " }\n" + outline);
    GenApi::INode& root = m_pMap->Get("Root");
    m_pWnd->RegisterINode(&root, "");

    {
        const CThreads threads({
            [&](unsigned n) { // a device that changes
                const GenApi::AutoLock lock(m_pMap->map._GetLock());
                // Now and then it isn't available.
                ErrorOf([&] { m_pMap->Int(("I" + std::to_string(n % 100)).c_str()) = n % 1000; });
            },
            [&](unsigned n) {
                m_pMap->Int("A") = n / 8 % 2;
                m_pMap->map._Poll(n % 3);
            },
            [&](unsigned n) { // an application that drives the window
                const char* const texts[] = {"", "I1", "9|E", "(", "I[0-4]"};
                m_pWnd->SetFilterText(texts[n % 5]);
                m_pWnd->SetEnableFilter(n % 3 != 0);
                m_pWnd->SetEnableRegularExpression(n % 7 == 0);
                m_pWnd->SetVisibility(static_cast<GenApi::EVisibility>(n % 3));
                m_pWnd->SetAlphabeticMode(n % 16 < 8);
                m_pWnd->SetEnablePolling(n % 2 == 0);
            },
            [&](unsigned n) {
                void* const hNode = m_pWnd->RegisterINode(&root, n % 2 ? "Again" : "");
                m_pWnd->Refresh();
                m_pWnd->DeregisterINode(hNode);
            },
        });
        for (int i = 0; i < HammerRounds(30); ++i) {
            m_pWnd->Show(nullptr, KxWindowMode_Modaless);
            for (int k = 0; k < 5; ++k)
                Pump();
            m_pWnd->Close();
            Pump();
        }
    }
    m_pWnd->SetEnableFilter(false);
    m_pWnd->SetEnablePolling(false);
    m_pWnd->SetAlphabeticMode(false);
    m_pMap->Int("A") = 1;
    ShowWnd();
    EXPECT_EQ(Grid().topLevelItemCount(), 101);
}

} // namespace
} // namespace KxTest
