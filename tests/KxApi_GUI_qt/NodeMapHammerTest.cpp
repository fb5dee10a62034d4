// SPDX-License-Identifier: Apache-2.0
// A node-map window whose nodes and settings many threads change while its rows are made, filtered and
// closed.
#include "NodeMapTest.h"

namespace KxTest
{
namespace
{

using namespace KxApi;

using NodeMapHammer = NodeMapTest;

TEST_F(NodeMapHammer, StandsChangesOfAllThreadsAtOnce)
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
