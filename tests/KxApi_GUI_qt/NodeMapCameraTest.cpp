// SPDX-License-Identifier: Apache-2.0
// The node-map window over a simulated camera that has features of every kind, by mouse and keyboard.
#include "NodeMapTest.h"

#include <KxApi_TL/IKxDevice.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/IKxSystem.h>

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTemporaryDir>

namespace KxTest
{
namespace
{

using namespace KxApi;

class NodeMapCamera : public NodeMapTest
{
protected:
    NodeMapCamera()
    {
        qputenv("TMPDIR", m_folder.path().toLocal8Bit()); // keeps this camera apart from other processes'
        m_system.Reset(CreateIKxSystem(KXSIM_PRODUCER));
        m_system->UpdateInterfaceList();
        Open();
        m_hRoot = m_pWnd->RegisterINode(Camera().GetNode("Root"), "");
        ShowWnd();
    }
    ~NodeMapCamera() override { m_pWnd->Close(); }

    void Open()
    {
        for (uint32_t i = 0; i < m_system->GetInterfaceCount(); ++i) {
            IKxInterface& interface = *m_system->GetIKxInterface(i);
            interface.UpdateDeviceList();
            for (uint32_t d = 0; d < interface.GetDeviceCount(); ++d) {
                if (interface.GetIKxDeviceInfo(d)->GetID() == "KX-U03N_1003")
                    m_device.Reset(
                        CreateIKxDevice(&interface, interface.GetIKxDeviceInfo(d), KxDeviceAccess_Control));
            }
        }
    }
    GenApi::INodeMap& Camera() { return *m_device->GetIKxRemotePort()->GetINodeMap(); }
    /// What the camera has, whatever was cached.
    std::string Answer(const char* szFeature)
    {
        return GenApi::CValuePtr(Camera().GetNode(szFeature))->ToString(false, true).c_str();
    }

    /// The property of a feature, scrolled to, its editor chosen as F2 in the row does.
    CCustomPropertyGridProperty_Base& Chosen(const char* szFeature)
    {
        for (QTreeWidgetItemIterator it(&Grid()); *it; ++it) {
            CCustomPropertyGridProperty_Base* const pProperty = Grid().PropertyOf(*it);
            if (!pProperty || pProperty->objectName() != szFeature)
                continue;
            Grid().scrollToItem(*it, QAbstractItemView::PositionAtCenter);
            Grid().setCurrentItem(*it);
            Settle();
            QTest::keyClick(&Grid(), Qt::Key_F2);
            return *pProperty;
        }
        throw std::logic_error(std::string("no such feature: ") + szFeature);
    }
    template <class Editor>
    Editor& EditorOf(const char* szFeature)
    {
        return *Chosen(szFeature).findChild<Editor*>();
    }
    static void Type(QWidget& editor, const char* szText)
    {
        QTest::keySequence(&editor, QKeySequence::SelectAll);
        QTest::keyClicks(&editor, szText);
        QTest::keyClick(&editor, Qt::Key_Return);
    }
    /// Chooses in the list that opens; it takes no click for a moment.
    bool ChooseByMouse(QComboBox& box, int nIndex)
    {
        QTest::mouseClick(&box, Qt::LeftButton);
        return PumpUntil([&] {
            const QRect rect = box.view()->visualRect(box.model()->index(nIndex, 0));
            if (box.view()->isVisible()) {
                QTest::mouseMove(box.view()->viewport(), rect.center());
                QTest::mouseClick(box.view()->viewport(), Qt::LeftButton, {}, rect.center());
            }
            return box.currentIndex() == nIndex;
        });
    }

    QTemporaryDir m_folder;
    void* m_hRoot = nullptr;
    CKxAutoPtr<IKxSystemReleasable, IKxSystem> m_system;
    CKxAutoPtr<IKxDeviceReleasable, IKxDevice> m_device;
};

TEST_F(NodeMapCamera, TakesEachKindOfFeatureFromTheKeyboard)
{
    const struct
    {
        const char* szFeature;
        const char* szTyped;
        const char* szAnswer;
    } rows[] = {
        {"KxIntLinear", "33", "30"},
        {"KxIntLogarithmic", "3000", "3000"},
        {"KxIntPureNumber", "43", "43"},
        {"KxIntHexNumber", "0xBEEF", "0xbeef"},
        {"KxIntIPV4Address", "10.0.0.7", "10.0.0.7"},
        {"KxIntWithUnit", "510", "510"},
        {"KxFloatLinear", "0.5", "0.5"},
        {"KxFloatPureNumber", "2.5", "2.5"},
        {"KxFloatSteps", "2", "2"},
        {"KxString", "typed", "typed"},
        {"KxStringRegister", "reg", "reg"},
        {"KxSignedRegister", "-7", "-7"},
    };
    for (const auto& row : rows) {
        Type(*Chosen(row.szFeature).focusWidget(), row.szTyped);
        EXPECT_EQ(Answer(row.szFeature), row.szAnswer) << row.szFeature;
        RecordProperty(row.szFeature, Answer(row.szFeature));
    }
    QTest::keyClick(&EditorOf<QComboBox>("KxBoolean"), Qt::Key_Up);
    EXPECT_EQ(Answer("KxBoolean"), "0");
    QTest::keyClick(&EditorOf<QComboBox>("KxEnumeration"), Qt::Key_Home);
    EXPECT_EQ(Answer("KxEnumeration"), "Red");
    QTest::keyClick(&EditorOf<QPushButton>("KxCommand"), Qt::Key_Space);
    EXPECT_EQ(Answer("KxCommandCount"), "1");
}

TEST_F(NodeMapCamera, TakesEachKindOfFeatureFromTheMouse)
{
    auto& slider = EditorOf<QSlider>("KxFloatLinear");
    QTest::mouseClick(&slider, Qt::LeftButton, {}, QPoint(slider.width() - 2, slider.height() / 2));
    EXPECT_NE(Answer("KxFloatLinear"), "0.25");
    EXPECT_TRUE(ChooseByMouse(EditorOf<QComboBox>("KxBoolean"), 0));
    EXPECT_EQ(Answer("KxBoolean"), "0");
    EXPECT_TRUE(ChooseByMouse(EditorOf<QComboBox>("KxEnumeration"), 2));
    EXPECT_EQ(Answer("KxEnumeration"), "Blue");
    QTest::mouseClick(&EditorOf<QPushButton>("KxCommand"), Qt::LeftButton);
    EXPECT_EQ(Answer("KxCommandCount"), "1");
    // What one feature does to others shows at once.
    EXPECT_TRUE(ChooseByMouse(EditorOf<QComboBox>("KxLocked"), 1));
    EXPECT_TRUE(EditorOf<QLabel>("KxSometimesLocked").isVisible());
    EXPECT_EQ(EditorOf<QLabel>("KxSometimesLocked").text(), "4");
}

TEST_F(NodeMapCamera, GoesOnWhenTheCameraIsUnplugged)
{
    m_pWnd->SetEnablePolling(true);
    EditorOf<QPushButton>("KxFaultUnplug").click();
    Type(EditorOf<QSpinBox>("KxIntLinear"), "33"); // the camera can't take it
    EditorOf<QComboBox>("KxEnumeration").setCurrentIndex(0);
    for (const bool bAlphabetic : {true, false}) {
        m_pWnd->Refresh();
        m_pWnd->SetAlphabeticMode(bAlphabetic);
        Settle();
    }
    EXPECT_GT(Grid().topLevelItemCount(), 5);
    EXPECT_THROW(Answer("KxIntLinear"), GenICam::GenericException);

    // The same window shows the camera that has come back.
    m_pWnd->Close();
    m_pWnd->DeregisterINode(m_hRoot);
    m_device.Reset();
    GenApi::INodeMap& interface = *m_system->GetIKxInterface(0)->GetIKxPort()->GetINodeMap();
    GenApi::CValuePtr(interface.GetNode("KxCameraSelector"))->FromString("KX_U03N_1003");
    GenApi::CBooleanPtr(interface.GetNode("KxCameraPlugged"))->SetValue(true);
    Open();
    m_pWnd->RegisterINode(Camera().GetNode("KxIntegers"), "");
    ShowWnd();
    Type(EditorOf<QSpinBox>("KxIntLinear"), "35");
    EXPECT_EQ(Answer("KxIntLinear"), "35");
}

} // namespace
} // namespace KxTest
