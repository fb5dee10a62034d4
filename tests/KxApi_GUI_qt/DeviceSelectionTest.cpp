// SPDX-License-Identifier: Apache-2.0
// Finding a camera in the device selection window, and choosing it.
#include "DeviceTest.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QCheckBox>
#include <QMenuBar>
#include <QTest>

namespace KxTest
{
namespace
{

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using Strings = std::vector<std::string>;
using namespace KxApi;

class SelectDevice : public DeviceTest
{
protected:
    FakeSystem& m_usb = AddSystem("USB cameras");
    FakeInterface& m_port = m_usb.Add("Port 1", "U3V", {{"cam-a"}, {"cam-b", 2}, {"cam-c", 3}});
    FakeSystem& m_net = AddSystem("Network cameras");
    FakeInterface& m_card = m_net.Add("eth0", "GEV", {{"cam-d", 1, 0xAABBCCDDEEFF, 0xC0A80007, 0xFFFFFF00}});
};

TEST_F(SelectDevice, StartsWithoutStatusBarAndSelection)
{
    EXPECT_FALSE(m_pWnd->GetVisibleStatusBar());
    EXPECT_EQ(Chosen(), "- -");
    m_pWnd->GetSelectedDeviceInfo(nullptr, nullptr);
    EXPECT_THROW(m_pWnd->RegisterTargetIKxSystem(nullptr), GenICam::InvalidArgumentException);

    Open({});
    m_pWnd->SetVisibleStatusBar(true);
    Pump();
    EXPECT_TRUE(Find<QWidget>("widgetStatus").isVisible());
    m_pWnd->SetVisibleMenu(false);
    Pump();
    EXPECT_FALSE(Find<QWidget>("widgetMenu").isVisible());
    EXPECT_THAT(Rows(), IsEmpty());
    for (const char* const szButton : {"btnSetIP", "btnDeviceDiscovery", "btnOK"})
        EXPECT_FALSE(IsEnabled(szButton)) << szButton;
}

TEST_F(SelectDevice, ListsSystemsInterfacesAndDevicesWithIconsOfTheirKinds)
{
    FakeSystem& grabber = AddSystem("Grabber");
    grabber.Add("Board 0", "CXP", {{"cam-e"}});
    grabber.Add("odd", "CL", {{"cam-f"}});
    Open({&m_usb, &m_net, &grabber});
    EXPECT_EQ(Rows(),
              (Strings{"USB cameras", "  Port 1", "    cam-a", "    cam-b", "Network cameras", "  eth0",
                       "    cam-d", "Grabber", "  Board 0", "    cam-e", "  odd", "    cam-f"}));
    for (const auto& [szRow, szIcon] :
         std::vector<std::pair<const char*, const char*>>{{"Grabber", "genicam"},
                                                          {"Board 0", "Board"},
                                                          {"eth0", "Network"},
                                                          {"Port 1", "USB"},
                                                          {"cam-e", "coaxpress"},
                                                          {"cam-d", "gev"},
                                                          {"cam-a", "usb3_vision"}})
    {
        const QString strPath = QStringLiteral(":/icon/resqt/%1.bmp").arg(QLatin1String(szIcon));
        const QImage expected(strPath);
        EXPECT_FALSE(expected.isNull()) << szIcon;
        EXPECT_EQ(expected.pixelColor(0, 0).alpha(), 0) << szIcon << " has no transparent corner";
        EXPECT_EQ(Item(szRow)->icon(0).pixmap(expected.size()).toImage().convertToFormat(expected.format()),
                  QIcon(strPath).pixmap(expected.size()).toImage().convertToFormat(expected.format()))
            << szRow;
    }
    EXPECT_TRUE(Item("odd")->icon(0).isNull());
    EXPECT_TRUE(Item("cam-d")->parent()->isExpanded());
}

TEST_F(SelectDevice, ShowsNotAccessibleDevicesOnDemandByBoxAndMenuAlike)
{
    Open({&m_usb});
    EXPECT_THAT(Rows(), Not(Contains("    cam-c")));
    auto& box = Find<QCheckBox>("chkShowAllDevices");
    box.click();
    EXPECT_THAT(Rows(), Contains("    cam-c"));
    Select("cam-c");
    QAction* pAction = nullptr;
    for (QAction* const p : WidgetOf(*m_pWnd)->findChild<QMenuBar*>()->actions().first()->menu()->actions())
        pAction = p->text() == "Show not &accessible devices" ? p : pAction;
    ASSERT_NE(pAction, nullptr);
    EXPECT_TRUE(pAction->isChecked());
    pAction->trigger();
    EXPECT_FALSE(box.isChecked());
    EXPECT_THAT(Rows(), Not(Contains("    cam-c")));
    EXPECT_EQ(Selected(), "") << "a selected device that is listed no more";
    for (const char* const szTable : {"tableSystem", "tableInterface", "tableDevice"})
        EXPECT_THAT(Lines(szTable), IsEmpty()) << szTable;
}

TEST_F(SelectDevice, TellsTheFactsOfWhatIsSelected)
{
    Open({&m_usb, &m_net});
    Select("Network cameras");
    EXPECT_EQ(Lines("tableSystem"),
              (Strings{"Vendor: Fake", "Model: Fake producer", "Version: 2.1", "TL Type: Mixed",
                       "Name: fake.cti", "Path Name: /opt/fake.cti", "Display Name: Network cameras",
                       "GenTL Version Major: 1", "GenTL Version Minor: 5"}));
    EXPECT_THAT(Lines("tableInterface"), IsEmpty());
    EXPECT_FALSE(IsEnabled("btnDeviceDiscovery"));
    Select("eth0");
    EXPECT_EQ(Lines("tableInterface"),
              (Strings{"Display Name: eth0", "TL Type: GEV", "MAC Address: 00:11:22:33:44:55",
                       "IP Address: 192.168.0.1", "Subnet Mask: 255.255.255.0", "Gateway: 0.0.0.0"}));
    EXPECT_TRUE(IsEnabled("btnDeviceDiscovery"));
    EXPECT_THAT(Lines("tableDevice"), IsEmpty());
    Select("cam-d");
    EXPECT_EQ(
        Lines("tableDevice"),
        (Strings{"ID: cam-d", "Vendor: Fake", "Model: Fake camera", "TL Type: GEV", "Display Name: cam-d",
                 "MAC Address: aa:bb:cc:dd:ee:ff", "IP Address: 192.168.0.7", "Subnet Mask: 255.255.255.0",
                 "Gateway: 0.0.0.0", "Access Status: ReadWrite(Full access)[1]", "User Defined Name: left",
                 "Serial Number: 4711", "Version: 1.2"}));
    EXPECT_TRUE(IsEnabled("btnSetIP"));
    EXPECT_TRUE(IsEnabled("btnOK"));
    Select("cam-a");
    EXPECT_EQ(Lines("tableInterface"), (Strings{"Display Name: Port 1", "TL Type: U3V"}));
    EXPECT_EQ(Lines("tableDevice").size(), 9u) << "no addresses";
    EXPECT_FALSE(IsEnabled("btnSetIP"));
    EXPECT_FALSE(IsEnabled("btnDeviceDiscovery"));
}

TEST_F(SelectDevice, SaysWhetherTheDeviceCanBeChosen)
{
    const struct
    {
        int32_t nStatus;
        int32_t nVendor;
        const char* szLine;
        bool bOK;
    } rows[] = {{1, 0, "ReadWrite(Full access)[1]", true},
                {2, 0, "ReadOnly(Read-only access)[2] blue", true},
                {3, 1, "NoAccess(Non-available device)[3] red", false},
                {4, 1, "Busy[4] red", false},
                {5, 1, "OpenReadWrite[5] red", false},
                {6, 1, "OpenRead[6] red", false},
                {0, 0, "Unknown(Unknown status)[0] red", false},
                {0, 1, "Unknown(Unknown status)[0]", true},
                {77, 1, "Unknown(Unknown status)[77]", true}};
    std::vector<FakeSystem*> systems;
    for (const auto& row : rows) {
        systems.push_back(&AddSystem("S", row.nVendor));
        systems.back()->Add("I", "U3V", {{row.szLine, row.nStatus}});
    }
    Open(systems);
    Find<QCheckBox>("chkShowAllDevices").click();
    for (const auto& row : rows) {
        Select(row.szLine);
        EXPECT_THAT(Lines("tableDevice"), Contains(std::string("Access Status: ") + row.szLine));
        EXPECT_EQ(IsEnabled("btnOK"), row.bOK) << row.szLine;
    }
}

TEST_F(SelectDevice, ShowsInRedWhyACameraCanNotBeReached)
{
    const uint32_t nOwn = FakeInterface::kIP;
    const uint32_t nMask = FakeInterface::kMask;
    struct Row
    {
        FakeCamera camera;
        Strings lines;
    };
    const std::vector<Row> rows{
        {{"subnet", 3, 0, 0x0A000005, nMask},
         {"IP Address: 10.0.0.5 red", "Subnet Mask: 255.255.255.0", "Gateway: 0.0.0.0"}},
        {{"own", 3, 0, nOwn, nMask},
         {"IP Address: 192.168.0.1 red", "Subnet Mask: 255.255.255.0", "Gateway: 0.0.0.0"}},
        {{"mask", 3, 0, nOwn + 1, 0xFFFF0000, 0x0A000001},
         {"IP Address: 192.168.0.2 red", "Subnet Mask: 255.255.0.0 red", "Gateway: 10.0.0.1 red"}},
        {{"fine", 3, 0, nOwn + 1, nMask, nOwn + 2},
         {"IP Address: 192.168.0.2", "Subnet Mask: 255.255.255.0", "Gateway: 192.168.0.3"}},
        {{"open", 4, 0, 0x0A000005, 0xFFFF0000},
         {"IP Address: 10.0.0.5", "Subnet Mask: 255.255.0.0", "Gateway: 0.0.0.0"}}};
    std::vector<FakeCamera> cameras;
    for (const Row& row : rows)
        cameras.push_back(row.camera);
    m_card.SetCameras(cameras);
    Open({&m_net});
    Find<QCheckBox>("chkShowAllDevices").click();
    for (const Row& row : rows) {
        Select(row.camera.id.c_str());
        const Strings lines = Lines("tableDevice");
        ASSERT_EQ(lines.size(), 13u);
        EXPECT_EQ(Strings(lines.begin() + 6, lines.begin() + 9), row.lines) << row.camera.id;
    }
}

TEST_F(SelectDevice, HandsBackWhatWasChosenByButtonOrDoubleClickAndNothingAfterCancel)
{
    Open({&m_usb, &m_net});
    Select("cam-b");
    Button("btnOK").click();
    Pump();
    EXPECT_EQ(m_pWnd->GetWindowHandle(), nullptr);
    EXPECT_EQ(Chosen(), "Port 1 cam-b");

    Show(*m_pWnd);
    EXPECT_EQ(Selected(), "") << "a new dialog";
    EXPECT_EQ(Chosen(), "Port 1 cam-b") << "until another choice";
    DoubleClick("cam-d");
    Pump();
    EXPECT_EQ(Chosen(), "eth0 cam-d");

    Show(*m_pWnd);
    Select("cam-a");
    Button("btnCancel").click();
    Pump();
    EXPECT_EQ(m_pWnd->GetWindowHandle(), nullptr);
    EXPECT_EQ(Chosen(), "- -");
}

TEST_F(SelectDevice, HandsBackNoDeviceForARowThatIsNone)
{
    Open({&m_usb});
    for (const auto& [szRow, szChosen] :
         std::vector<std::pair<const char*, const char*>>{{"USB cameras", "- -"}, {"Port 1", "Port 1 -"}})
    {
        if (!m_pWnd->GetWindowHandle())
            Show(*m_pWnd);
        DoubleClick(szRow);
        EXPECT_FALSE(IsEnabled("btnOK")) << szRow;
        EXPECT_TRUE(m_pWnd->IsVisible()) << "a double click does no more than the button";
        QMetaObject::invokeMethod(WidgetOf(*m_pWnd), "on_btnOK_clicked");
        Pump();
        EXPECT_EQ(Chosen(), szChosen) << szRow;
    }
}

TEST_F(SelectDevice, KeepsTheSelectionAcrossChangesAndDropsItWithItsDevice)
{
    Open({&m_usb});
    Select("cam-b");
    m_port.SetCameras({{"cam-0"}, {"cam-a"}, {"cam-b", 4}});
    m_usb.Update();
    TellOfChange();
    EXPECT_EQ(Rows(), (Strings{"USB cameras", "  Port 1", "    cam-0", "    cam-a", "    cam-b"}));
    EXPECT_EQ(Selected(), "cam-b");
    EXPECT_THAT(Lines("tableDevice"), Contains("Access Status: Busy[4] red"));
    EXPECT_FALSE(IsEnabled("btnOK"));
    m_port.SetCameras({{"cam-a"}});
    m_usb.Update();
    TellOfChange();
    EXPECT_EQ(Selected(), "");
    EXPECT_THAT(Lines("tableDevice"), IsEmpty());
    EXPECT_FALSE(IsEnabled("btnOK"));
}

TEST_F(SelectDevice, ChoosesTheCameraThatIsShownWhenTheListHasMovedOn)
{
    Open({&m_usb});
    Select("cam-b");
    m_port.SetCameras({{"cam-b"}, {"cam-x"}});
    m_usb.Update(); // which isn't shown yet
    Button("btnOK").click();
    EXPECT_EQ(Chosen(), "Port 1 cam-b");
}

TEST_F(SelectDevice, FollowsANodeMapThatOrdersItsDevicesAnotherWay)
{
    m_card.SetCameras({{"cam-d", 1, 1}, {"cam-e", 1, 2}});
    Open({&m_net});
    m_card.searchable = false;
    m_card.SetCameras({{"cam-e", 1, 2}, {"cam-d", 1, 1}}); // the registers know, the list does not
    Select("cam-d");
    EXPECT_THAT(Lines("tableDevice"), Contains("MAC Address: 00:00:00:00:00:01"));
    m_card.SetCameras({});
    Select("cam-e");
    EXPECT_EQ(Lines("tableDevice").size(), 9u) << "no address of another camera";
}

TEST_F(SelectDevice, PaintsNothingWhenAnUpdateChangesNothing)
{
    Open({&m_usb, &m_net});
    Select("cam-d");
    ASSERT_TRUE(PumpUntil([this] { return QTest::qWaitForWindowExposed(WidgetOf(*m_pWnd)); }));
    Pump();
    std::vector<std::unique_ptr<CPaintCounter>> counters;
    for (QWidget* const pWidget : WidgetOf(*m_pWnd)->findChildren<QWidget*>())
        counters.push_back(std::make_unique<CPaintCounter>(*pWidget));
    // Widgets paint a little later: after turns of the loop, and not only after a time in which it may stand.
    const auto paints = [&] {
        for (int i = 0; i < 20; ++i)
            QTest::qWait(5);
        int nPaints = 0;
        for (const auto& pCounter : counters)
            nPaints += std::exchange(pCounter->nPaints, 0);
        return nPaints;
    };
    ASSERT_TRUE(PumpUntil([&] { return paints() == 0; })) << "what showing it painted";
    for (int i = 0; i < 3; ++i)
        TellOfChange();
    EXPECT_EQ(paints(), 0);
    EXPECT_EQ(Selected(), "cam-d");
    m_card.SetCameras({{"cam-d", 4}});
    m_net.Update();
    TellOfChange();
    EXPECT_GT(paints(), 0) << "and the counters count";
}

} // namespace
} // namespace KxTest
