// SPDX-License-Identifier: Apache-2.0
// The device selection window with simulated cameras, from the search to the open camera.
#include "DeviceTest.h"
#include "device/DisplayDeviceSelectionForceIPDlg_qt.h"

#include <KxApi_TL/IKxDevice.h>

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <algorithm>

namespace KxTest
{
namespace
{

using ::testing::Contains;
using namespace KxApi;

using SystemPtr = CKxAutoPtr<IKxSystemReleasable, IKxSystem>;
using DevicePtr = CKxAutoPtr<IKxDeviceReleasable, IKxDevice>;

class SimulatedCameras : public DeviceTest
{
protected:
    SimulatedCameras()
    {
        // Cameras know only the processes that share their folder for temporary files.
        qputenv("TMPDIR", m_objFolder.path().toLocal8Bit());
        m_pSystem.Reset(CreateIKxSystem(KXSIM_PRODUCER));
        m_pWnd->RegisterTargetIKxSystem(m_pSystem.Get());
        Show(*m_pWnd);
    }

    bool Appears(const char* text)
    {
        return PumpUntil([&] { return Item(text) != nullptr; });
    }

    QTemporaryDir m_objFolder;
    SystemPtr m_pSystem;
};

TEST_F(SimulatedCameras, AreFoundOnThreeInterfacesAndOneIsForcedIntoTheSubnetAndOpened)
{
    for (const char* const szRow :
         {"Kestrix KX-U5M (1001)", "Kestrix KX-G1C (2001)", "Kestrix KX-C1Y (3002)"})
        ASSERT_TRUE(Appears(szRow)) << szRow;
    EXPECT_EQ(Item("Kestrix Simulated Cameras")->childCount(), 3);
    constexpr char kFar[] = "Kestrix KX-G1M (2003)";
    EXPECT_EQ(Item(kFar), nullptr);
    Find<QCheckBox>("chkShowAllDevices").click();
    ASSERT_NE(Item(kFar), nullptr);
    Select(kFar);
    EXPECT_THAT(Lines("tableDevice"), Contains("IP Address: 10.1.2.3 red"));
    EXPECT_THAT(Lines("tableDevice"), Contains("Access Status: NoAccess(Non-available device)[3] red"));
    EXPECT_FALSE(IsEnabled("btnOK"));
    const CDialogAnswers answers({[](QWidget& dialog) {
        Type(dialog, "lineEditDevIP", "192.168.10.77");
        Type(dialog, "lineEditDevMask", "255.255.255.0");
        Type(dialog, "lineEditDevgw", "0.0.0.0");
        Click(dialog, "btnOK");
    }});
    Button("btnSetIP").click();
    EXPECT_TRUE(PumpUntil([&] { return IsEnabled("btnOK"); })) << "the next search finds it reachable";
    EXPECT_THAT(Lines("tableDevice"), Contains("IP Address: 192.168.10.77"));
    DoubleClick(kFar);
    Pump();

    IKxInterface* pInterface = nullptr;
    const IKxDeviceInfo* pInfo = nullptr;
    m_pWnd->GetSelectedDeviceInfo(&pInterface, &pInfo);
    const DevicePtr pDevice(CreateIKxDevice(pInterface, pInfo, KxDeviceAccess_Control));
    EXPECT_EQ(GenApi::CStringPtr(pDevice->GetIKxRemotePort()->GetINodeMap()->GetNode("DeviceModelName"))
                  ->GetValue(),
              "KX-G1M");
}

TEST_F(SimulatedCameras, AreShownAboveALineThatNamesUnusableProducers)
{
    const QString strFile = m_objFolder.filePath("broken.cti");
    QFile file(strFile);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    qputenv("GENICAM_GENTL64_PATH", strFile.toLocal8Bit());
    FindKxProducers();
    qunsetenv("GENICAM_GENTL64_PATH");
    const auto isTold = [&](const QString& strText) {
        const auto labels = WidgetOf(*m_pWnd)->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&](const QLabel* pLabel) {
            return pLabel->isVisible() && pLabel->text().startsWith(strText);
        });
    };
    m_pWnd->SetVisibleStatusBar(true);
    EXPECT_TRUE(PumpUntil([&] { return isTold("Unusable: broken.cti: "); }));
    m_pWnd->SetUserStatusBarText("The application's own");
    EXPECT_TRUE(PumpUntil([&] { return isTold("The application's own"); }));
}

} // namespace
} // namespace KxTest
