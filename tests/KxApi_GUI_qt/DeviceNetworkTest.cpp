// SPDX-License-Identifier: Apache-2.0
// Giving a camera another address, and setting how cameras are looked for.
#include "DeviceTest.h"
#include "device/DeviceDiscoveryCommandOptionDlg_qt.h"
#include "device/DisplayDeviceSelectionForceIPDlg_qt.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QLabel>
#include <QTest>
#include <atomic>
#include <future>

namespace KxTest
{
namespace
{

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;
using namespace KxApi;

constexpr uint32_t kFarIP = 0x0A000005; // 10.0.0.5

class NetworkDialogs : public DeviceTest
{
protected:
    NetworkDialogs()
    {
        m_system.Update();
        Registers(kFarIP, FakeInterface::kMask, 0);
    }

    /// Gives the registers of the camera that is selected.
    void Registers(uint32_t nIP, uint32_t nMask, uint32_t nGateway)
    {
        for (const auto& [szName, nValue] :
             std::vector<std::pair<const char*, uint32_t>>{{"GevDeviceForceIPAddress", nIP},
                                                           {"GevDeviceForceSubnetMask", nMask},
                                                           {"GevDeviceForceGateway", nGateway}})
            GenApi::CIntegerPtr(m_card.GetINodeMap()->GetNode(szName))->SetValue(nValue);
    }

    /// Shows a dialog of its own.
    template <class Dialog>
    std::unique_ptr<Dialog> Open()
    {
        auto pDialog = std::make_unique<Dialog>(nullptr);
        pDialog->SetInterface(&m_card);
        pDialog->show();
        Pump();
        return pDialog;
    }

    /// The marked entries of the Force IP dialog and its message.
    static std::string Warning(const QWidget& dialog)
    {
        std::string text;
        for (const char* const szName : {"lineEditDevIP", "lineEditDevMask", "lineEditDevgw"}) {
            if (Edit(dialog, szName).styleSheet().contains("yellow"))
                text += std::string(szName).substr(11) + " ";
        }
        return text + "| " + dialog.findChild<QLabel*>("labelStatus")->text().toStdString();
    }

    /// Shows the window with a camera while its first search lasts, until m_end.
    void OpenWhileSearching()
    {
        m_card.SetCameras({{"cam-near", 1, 1, FakeInterface::kIP + 1, FakeInterface::kMask}});
        m_card.Refresh();
        std::promise<void> searching;
        m_card.onUpdate = [&, nSearch = 0]() mutable {
            if (nSearch++ > 0)
                return;
            m_bSearching = true;
            searching.set_value();
            m_end.get_future().wait();
            m_bSearching = false;
        };
        m_pWnd->RegisterTargetIKxSystem(&m_system);
        Show(*m_pWnd);
        searching.get_future().wait();
    }

    std::promise<void> m_end;
    std::atomic<bool> m_bSearching{false};
    FakeSystem& m_system = AddSystem("Network cameras");
    FakeInterface& m_card =
        m_system.Add("eth0", "GEV", {{"cam-far", 3, 0xAABBCCDDEEFF, kFarIP, FakeInterface::kMask}});
};

constexpr char kSubnet[] = "Camera Subnet must be the same with host Subnet.";
constexpr char kAddress[] = "Camera IP address must differ from host IP address.";

TEST_F(NetworkDialogs, ForceIPShowsCardAndCameraAndWarnsAtOnce)
{
    const auto pDialog = Open<CDisplayDeviceSelectionForceIPDlg>();
    EXPECT_EQ(pDialog->windowTitle(), "Set IP Address");
    EXPECT_EQ(pDialog->minimumSize(), pDialog->maximumSize());
    for (const auto& [szName, szText] :
         std::vector<std::pair<const char*, const char*>>{{"lineEditNICMAC", "00:11:22:33:44:55"},
                                                          {"lineEditDevMAC", "aa:bb:cc:dd:ee:ff"},
                                                          {"lineEditNICIP", "192.168.0.1"},
                                                          {"lineEditDevIP", "10.0.0.5"},
                                                          {"lineEditNICMask", "255.255.255.0"},
                                                          {"lineEditDevMask", "255.255.255.0"},
                                                          {"lineEditNICgw", "0.0.0.0"},
                                                          {"lineEditDevgw", "0.0.0.0"}})
        EXPECT_EQ(Edit(*pDialog, szName).text(), szText) << szName;
    EXPECT_TRUE(Edit(*pDialog, "lineEditNICIP").isReadOnly());
    EXPECT_EQ(Warning(*pDialog), std::string("IP | ") + kSubnet);
}

TEST_F(NetworkDialogs, ForceIPWarnsAsOneTypes)
{
    const auto pDialog = Open<CDisplayDeviceSelectionForceIPDlg>();
    struct Row
    {
        const char *szIP, *szMask, *szGateway;
        std::string warning;
    };
    for (const Row& row :
         std::vector<Row>{{"192.168.0.9", "255.255.255.0", "0.0.0.0", "| "},
                          {"192.168.0.9", "255.255.255.0", "192.168.0.254", "| "},
                          {"192.168.0.9", "255.255.255.0", "192.168.1.254", std::string("gw | ") + kSubnet},
                          {"192.168.0.9", "255.255.0.0", "0.0.0.0", std::string("Mask | ") + kSubnet},
                          {"192.168.0.1", "255.255.0.0", "10.0.0.1", std::string("IP Mask gw | ") + kAddress},
                          {"192.168.1.9", "255.255.255.0", "0.0.0.0", std::string("IP | ") + kSubnet},
                          {"camera", "255.255.255.0", "0.0.0.0", std::string("IP | ") + kSubnet},
                          {"", "255.255.255.0", "0.0.0.0", std::string("IP | ") + kSubnet}})
    {
        Type(*pDialog, "lineEditDevIP", row.szIP);
        Type(*pDialog, "lineEditDevMask", row.szMask);
        Type(*pDialog, "lineEditDevgw", row.szGateway);
        EXPECT_EQ(Warning(*pDialog), row.warning) << row.szIP << ' ' << row.szMask << ' ' << row.szGateway;
        EXPECT_TRUE(pDialog->findChild<QAbstractButton*>("btnOK")->isEnabled());
    }
}

TEST_F(NetworkDialogs, ForceIPSendsWhatIsNoAddressAsBroadcastAndNothingOnCancel)
{
    auto pDialog = Open<CDisplayDeviceSelectionForceIPDlg>();
    Type(*pDialog, "lineEditDevIP", "192.168.0.9");
    Click(*pDialog, "btnCancel");
    EXPECT_EQ(pDialog->result(), 0);
    EXPECT_EQ(m_card.Value("GevDeviceForceIPAddress"), kFarIP);

    pDialog = Open<CDisplayDeviceSelectionForceIPDlg>();
    Type(*pDialog, "lineEditDevgw", "no address");
    Click(*pDialog, "btnOK");
    EXPECT_EQ(pDialog->result(), 1);
    EXPECT_FALSE(pDialog->isVisible());
    EXPECT_EQ(m_card.Value("GevDeviceGateway"), 0xFFFFFFFF);
}

TEST_F(NetworkDialogs, StayOpenWhenTheInterfaceCanNotDoIt)
{
    m_card.outline = "IntReg GevInterfaceMACAddress { at 0x10 8 RO; Little; Representation MACAddress }";
    FakeInterface& poor = m_system.Add("eth1", "GEV");
    poor.outline = m_card.outline;
    CDisplayDeviceSelectionForceIPDlg force(nullptr);
    force.SetInterface(&poor);
    force.show();
    EXPECT_EQ(Edit(force, "lineEditNICMAC").text(), "00:11:22:33:44:55") << "what was read so far";
    EXPECT_EQ(Edit(force, "lineEditDevIP").text(), "");
    Click(force, "btnOK");
    EXPECT_TRUE(force.isVisible());

    poor.onNodeMap = [] { throw RUNTIME_EXCEPTION("unplugged"); };
    CDeviceDiscoveryCommandOptionDlg discovery(nullptr);
    discovery.SetInterface(&poor);
    discovery.show();
    Type(discovery, "lineEditDestinationIP", "10.0.0.1");
    Click(discovery, "btnOK");
    EXPECT_TRUE(discovery.isVisible());

    CDisplayDeviceSelectionForceIPDlg none(nullptr);
    none.show();
    Click(none, "btnOK");
    EXPECT_TRUE(none.isVisible()) << "without an interface";
}

TEST_F(NetworkDialogs, DiscoverySendsOnlyAddresses)
{
    auto pDialog = Open<CDeviceDiscoveryCommandOptionDlg>();
    EXPECT_EQ(pDialog->windowTitle(), "Device Discovery Command Option");
    EXPECT_EQ(Edit(*pDialog, "lineEditDestinationIP").text(), "255.255.255.255");
    EXPECT_FALSE(pDialog->findChild<QCheckBox*>("chkAllowBroadcastACK")->isChecked());
    for (const auto& [szText, bValid] : std::vector<std::pair<const char*, bool>>{
             {"192.168.0", false}, {"", false}, {"1.2.3.4.5", false}, {"255.255.255.255", true}})
    {
        Type(*pDialog, "lineEditDestinationIP", szText);
        EXPECT_EQ(pDialog->findChild<QAbstractButton*>("btnOK")->isEnabled(), bValid) << szText;
        EXPECT_EQ(Edit(*pDialog, "lineEditDestinationIP").styleSheet().contains("yellow"), !bValid) << szText;
    }
    Type(*pDialog, "lineEditDestinationIP", "192.168.0.255");
    pDialog->findChild<QCheckBox*>("chkAllowBroadcastACK")->click();
    Click(*pDialog, "btnCancel");
    EXPECT_EQ(m_card.Value("GevDeviceDiscoveryCommandDestinationIPAddress"), 0xFFFFFFFF);

    pDialog = Open<CDeviceDiscoveryCommandOptionDlg>();
    Type(*pDialog, "lineEditDestinationIP", "192.168.0.255");
    pDialog->findChild<QCheckBox*>("chkAllowBroadcastACK")->click();
    QTest::keyClick(pDialog.get(), Qt::Key_Return);
    EXPECT_EQ(pDialog->result(), 1);
    EXPECT_EQ(m_card.Value("GevDeviceDiscoveryCommandDestinationIPAddress"), 0xC0A800FF);
    EXPECT_TRUE(GenApi::CBooleanPtr(m_card.GetINodeMap()->GetNode("GevDiscoveryAllowsBroadcastOfAcknowledge"))
                    ->GetValue());
}

TEST_F(NetworkDialogs, TellTheNewAddressAtOnce)
{
    DeviceTest::Open({&m_system});
    Find<QCheckBox>("chkShowAllDevices").click();
    bool bAnswered = false;
    const CDialogAnswers answers({[&](QWidget& dialog) {
        Type(dialog, "lineEditDevIP", "192.168.0.9");
        Click(dialog, "btnOK");
        bAnswered = true;
    }});
    DoubleClick("cam-far");
    EXPECT_TRUE(PumpUntil([&] { return bAnswered; })) << "after a search that is under way";
    EXPECT_THAT(Lines("tableDevice"), Contains("IP Address: 192.168.0.9"));
}

TEST_F(NetworkDialogs, OpenAfterTheSearchAndHoldBackChangesOfTheTreeWhileOpen)
{
    OpenWhileSearching();
    // The producer isn't asked while it searches; what is known without it is there.
    Select("cam-near");
    EXPECT_THAT(Lines("tableDevice"),
                AllOf(Contains("ID: cam-near"), Not(Contains(HasSubstr("IP Address")))));
    EXPECT_TRUE(IsEnabled("btnOK"));

    bool bOpened = false;
    const CDialogAnswers answers({[&](QWidget& dialog) {
        EXPECT_FALSE(m_bSearching);
        m_card.SetCameras({{"cam-new"}});
        m_card.Refresh();
        TellOfChange();
        EXPECT_EQ(Item("cam-new"), nullptr);
        bOpened = true;
        Click(dialog, "btnCancel");
    }});
    Button("btnDeviceDiscovery").click();
    EXPECT_FALSE(bOpened);
    m_end.set_value();
    EXPECT_TRUE(PumpUntil([&] { return bOpened; }));
    EXPECT_NE(Item("cam-new"), nullptr);
}

TEST_F(NetworkDialogs, FactsComeWhenTheSearchIsOver)
{
    OpenWhileSearching();
    Select("cam-near");
    EXPECT_FALSE(IsEnabled("btnSetIP"));
    m_end.set_value();
    EXPECT_TRUE(PumpUntil([&] { return IsEnabled("btnSetIP"); }));
    EXPECT_THAT(Lines("tableDevice"), Contains("IP Address: 192.168.0.2"));
    EXPECT_EQ(Selected(), "cam-near");
}

TEST_F(NetworkDialogs, DoNotOpenForACameraThatHasGone)
{
    m_card.SetCameras({{"cam-near", 1, 1, FakeInterface::kIP + 1, FakeInterface::kMask}});
    DeviceTest::Open({&m_system});
    Select("cam-near");
    m_card.SetCameras({});
    m_system.Update(); // which isn't shown yet
    Button("btnSetIP").click();
    EXPECT_TRUE(PumpUntil([&] { return Selected().empty(); }));
    EXPECT_FALSE(IsEnabled("btnSetIP"));
}

TEST_F(NetworkDialogs, GoWithTheWindowWhoeverEndsIt)
{
    m_pWnd->RegisterTargetIKxSystem(&m_system);
    m_system.Update();
    auto pParent = std::make_unique<QWidget>();
    pParent->show();
    const CDialogAnswers::Answer endings[] = {[&](QWidget& dialog) {
                                                  m_pWnd->Close();
                                                  EXPECT_FALSE(dialog.isVisible());
                                              },
                                              [&](QWidget&) { pParent.reset(); }};
    for (const CDialogAnswers::Answer& end : endings) {
        m_pWnd->Show(pParent.get(), KxWindowMode_Modaless);
        Select("eth0");
        const CDialogAnswers answers({end});
        QMetaObject::invokeMethod(WidgetOf(*m_pWnd), "on_btnDeviceDiscovery_clicked");
        EXPECT_TRUE(PumpUntil([&] { return !m_pWnd->GetWindowHandle(); }));
    }
}

} // namespace
} // namespace KxTest
