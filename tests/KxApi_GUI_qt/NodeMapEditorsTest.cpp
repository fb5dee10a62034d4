// SPDX-License-Identifier: Apache-2.0
// The editors of the node-map window: what each kind of node shows, and what a user's input writes.
#include "NodeMapTest.h"
#include "nodemap/CustomPropertyGridProperty_Float_qt.h"
#include "nodemap/CustomPropertyGridProperty_IPAddress_qt.h"
#include "nodemap/CustomPropertyGridProperty_Integer_qt.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTextEdit>
#include <QWheelEvent>
#include <limits>

namespace KxTest
{
namespace
{

using namespace KxApi;

class NodeMapEditors : public NodeMapTest
{
protected:
    static void Type(QWidget& editor, const char* szText)
    {
        editor.setFocus();
        QTest::keySequence(&editor, QKeySequence::SelectAll);
        QTest::keyClicks(&editor, szText);
        QTest::keyClick(&editor, Qt::Key_Return);
    }
    static void Wheel(QWidget& editor)
    {
        QWheelEvent event(QPointF(5, 5), QPointF(5, 5), {}, QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&editor, &event);
    }
    int64_t Int(const char* szName) const { return m_pMap->Int(szName).GetValue(); }
};

TEST_F(NodeMapEditors, FollowTheAccessModeOfTheirNode)
{
    ShowMap("Category Root { pFeature I; pFeature B; pFeature C }\n"
            "Integer A { Value 1 } Integer L { Value 0 }\n"
            "Integer I { pIsAvailable A; pIsLocked L; Value 7; Min 0; Max 100; Representation Linear }\n"
            "Boolean B { pIsLocked L; Value true }\n"
            "Command C { pIsAvailable A; pIsLocked L; Value 0; CommandValue 1 }");
    EXPECT_TRUE(Find<QSpinBox>("I") && Find<QSlider>("I") && Find<QComboBox>("B"));
    EXPECT_EQ(Label("I"), "(none)");
    m_pMap->Int("L") = 1; // locked: the values as text; the button stays
    EXPECT_FALSE(Find<QSpinBox>("I") || Find<QSlider>("I") || Find<QComboBox>("B"));
    EXPECT_EQ(Label("I") + Label("B"), "7True");
    EXPECT_TRUE(Get<QPushButton>("C").isEnabled());
    m_pMap->Int("A") = 0;
    EXPECT_EQ(Label("I") + Label("C"), "Not AvailableNot Available");
    EXPECT_FALSE(Find<QPushButton>("C"));
    m_pMap->Int("A") = 1;
    EXPECT_EQ(Label("I"), "7");
    m_pMap->Int("L") = 0;
    EXPECT_EQ(Get<QSpinBox>("I").value(), 7);
}

TEST_F(NodeMapEditors, AreChosenByRangeAndRepresentation)
{
    ShowMap("Category Root { pFeature Spin; pFeature Large; pFeature Hex; pFeature Pure; pFeature Ip }\n"
            "Integer Spin { Value 1; Min 0; Max 2147483647; Representation Linear }\n"
            "Integer Large { Value 1; Min 0; Max 2147483648; Representation Linear }\n"
            "Integer Hex { Value 255; Min 0; Max 65535; Representation HexNumber }\n"
            "Integer Pure { Value 1; Min 0; Max 10; Representation PureNumber }\n"
            "Integer Ip { Value 0xC0A80001; Min 0; Max 0xFFFFFFFF; Representation IPV4Address }");
    EXPECT_TRUE(Find<QSpinBox>("Spin"));
    for (const char* const szRow : {"Large", "Hex", "Pure"})
        EXPECT_TRUE(Find<QLineEdit>(szRow) && !Find<QSpinBox>(szRow)) << szRow;
    EXPECT_EQ(Get<QLineEdit>("Ip").text(), "192.168.0.1");
}

TEST_F(NodeMapEditors, MoveIntegersByWholeIncrements)
{
    ShowMap("Category Root { pFeature I; pFeature Log }\nInteger I { Value 10; Min 2; Max 30; Inc 4; "
            "Representation Linear }\n"
            "Integer Log { Value 1000; Min 1; Max 100000; Representation Logarithmic }");
    auto& property = dynamic_cast<CCustomPropertyGridProperty_Integer&>(Property("I"));
    const struct
    {
        int64_t nWanted;
        int64_t nWritten;
    } cases[] = {{11, 14}, {9, 6}, {10, 10}, {1000, 30}, {-1000, 2}};
    for (const auto& c : cases) {
        m_pMap->Int("I") = 10;
        property.setValueForSpinbox(c.nWanted);
        EXPECT_EQ(Int("I"), c.nWritten) << c.nWanted;
    }
    m_pMap->Int("I") = 10;
    property.OnSliderSpinboxValueChanged(7); // 4, counted from the present value
    EXPECT_EQ(Int("I"), 2);
    EXPECT_EQ(Get<QSpinBox>("I").value(), 4);

    EXPECT_EQ(Get<QSlider>("Log").minimum(), 500);
    EXPECT_EQ(Get<QSlider>("Log").maximum(), 2000);
    EXPECT_EQ(Get<QSpinBox>("Log").maximum(), 100000);
}

TEST_F(NodeMapEditors, WriteWhatIsDraggedAndWhatIsHardToRead)
{
    ShowMap("Category Root { pFeature I; pFeature F; pFeature H; pFeature M; pFeature Ip; pFeature S; "
            "pFeature E; pFeature C }\n"
            "Integer I { pValue IReg; Min 0; Max 1000; Representation Linear } IntReg IReg { at 0x10 4 RW; "
            "Little }\n"
            "Float F { Value 1.5; Min 0; Max 200; DisplayPrecision 2 }\n"
            "Integer H { Value 1; Min 0; Max 65535; Representation HexNumber }\n"
            "Integer M { Value 5; Min 0; Max 281474976710655; Representation MACAddress }\n"
            "Integer Ip { Value 0; Min 0; Max 0xFFFFFFFF; Representation IPV4Address }\n"
            "StringReg S { Address 0x100; Length 16; AccessMode RW; pPort Device }\n"
            "Enumeration E { EnumEntry A { DisplayName Same; Value 3 } EnumEntry B2 { DisplayName Same; "
            "Value 4 } "
            "EnumEntry C2 { Value 5 } Value 5 }\n"
            "Command C { pValue CReg; CommandValue 9 } IntReg CReg { at 0x20 4 RW; Little }");
    m_pMap->port.TakeAccesses();
    Get<QSlider>("I").setSliderDown(true);
    Get<QSlider>("I").setSliderPosition(500);
    Get<QSlider>("I").setSliderDown(false);
    EXPECT_EQ(Int("I"), 500);
    EXPECT_EQ(Get<QSpinBox>("I").value(), 500);
    Get<QSlider>("F").setValue(50);
    EXPECT_EQ(m_pMap->Flt("F").GetValue(), 100);
    EXPECT_EQ(Get<QDoubleSpinBox>("F").value(), 100);
    Type(Get<QLineEdit>("H"), "nothing");
    EXPECT_EQ(Int("H"), 0);
    Type(Get<QLineEdit>("M"), "00:11:22:33:44:55");
    EXPECT_EQ(Int("M"), 0);
    Type(Get<QLineEdit>("Ip"), "1.2.3");
    EXPECT_EQ(Int("Ip"), 0x01020003);
    Type(Get<QLineEdit>("Ip"), "1.2.3.4.5");
    EXPECT_EQ(Int("Ip"), 0xFFFFFFFF);
    Get<QLineEdit>("S").setText(QString::fromUtf8("Gr\xC3\xBC\xC3\x9F"));
    QTest::keyClick(&Get<QLineEdit>("S"), Qt::Key_Return);
    EXPECT_EQ(m_pMap->Get<GenApi::IString>("S").GetValue(), "Gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(Get<QComboBox>("E").count(), 2); // two entries share a name, and the first of them counts
    QTest::keyClick(&Get<QComboBox>("E"), Qt::Key_Up);
    EXPECT_EQ(m_pMap->Enum("E").GetIntValue(), 3);
    QTest::mouseClick(&Get<QPushButton>("C"), Qt::LeftButton);
    EXPECT_EQ(m_pMap->port.Peek(0x20, 4), (FakePort::Bytes{9, 0, 0, 0}));
}

TEST_F(NodeMapEditors, TakeEachKindOfFeatureFromKeyboardAndMouse)
{
    ShowMap(
        "Category Root { pFeature Steps; pFeature Log; pFeature Pure; pFeature Hex; pFeature Ip; pFeature "
        "Slide; pFeature Real; pFeature Text; pFeature Reg; pFeature Signed; pFeature B; pFeature E; "
        "pFeature C }\n"
        "Integer Steps { Value 20; Min 0; Max 100; Inc 10; Unit us; Representation Linear }\n"
        "Integer Log { Value 10; Min 1; Max 100000; Representation Logarithmic }\n"
        "Integer Pure { Value 42; Min 0; Max 100; Representation PureNumber }\n"
        "Integer Hex { Value 1; Min 0; Max 65535; Representation HexNumber }\n"
        "Integer Ip { Value 0; Min 0; Max 0xFFFFFFFF; Representation IPV4Address }\n"
        "Float Slide { Value 0.25; Min 0; Max 1; Representation Linear }\n"
        "Float Real { Value 1.5; Min 0; Max 10; Representation PureNumber }\n"
        "String Text { Value initial } StringReg Reg { Address 0x100; Length 8; AccessMode RW; pPort "
        "Device }\n"
        "IntReg Signed { at 0x10 4 RW; Sign Signed; Little } Boolean B { Value true }\n"
        "Enumeration E { EnumEntry Red { Value 0 } EnumEntry Green { Value 1 } EnumEntry Blue { Value 2 } "
        "Value 1 }\n"
        "Command C { pValue CReg; CommandValue 9 } IntReg CReg { at 0x20 4 RW; Little }");
    // Chooses the editor as the key in the row does.
    const auto chosen = [this](const char* szRow) -> QWidget& {
        Grid().scrollToItem(Row(szRow));
        Grid().setCurrentItem(Row(szRow));
        Settle();
        QTest::keyClick(&Grid(), Qt::Key_F2);
        return *Property(szRow).focusWidget();
    };
    const struct
    {
        const char* szRow;
        const char* szTyped;
        const char* szValue;
    } rows[] = {{"Steps (us) ", "33", "30"},    {"Log", "3000", "3000"},    {"Pure", "43", "43"},
                {"Hex", "0xBEEF", "0xbeef"},    {"Slide", "0.5", "0.5"},    {"Real", "2.5", "2.5"},
                {"Ip", "10.0.0.7", "10.0.0.7"}, {"Text", "typed", "typed"}, {"Reg", "reg", "reg"},
                {"Signed", "-7", "-7"}};
    for (const auto& row : rows) {
        Type(chosen(row.szRow), row.szTyped);
        const std::string strNode = std::string(row.szRow).substr(0, std::string(row.szRow).find(' '));
        EXPECT_EQ(m_pMap->Value(strNode.c_str()).ToString().c_str(), std::string(row.szValue)) << row.szRow;
    }
    QTest::keyClick(&chosen("B"), Qt::Key_Up);
    EXPECT_FALSE(m_pMap->Get<GenApi::IBoolean>("B").GetValue());
    QTest::keyClick(&chosen("E"), Qt::Key_Home);
    EXPECT_EQ(m_pMap->Enum("E").GetIntValue(), 0);
    QTest::keyClick(&chosen("C"), Qt::Key_Space);
    EXPECT_EQ(m_pMap->port.Peek(0x20, 1), FakePort::Bytes{9});

    auto& slider = Get<QSlider>("Slide");
    QTest::mouseClick(&slider, Qt::LeftButton, {}, QPoint(slider.width() - 2, slider.height() / 2));
    EXPECT_NE(m_pMap->Flt("Slide").GetValue(), 0.5);
    auto& box = Get<QComboBox>("E");
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_TRUE(PumpUntil([&] { // the list takes no click for a moment
        const QPoint place = box.view()->visualRect(box.model()->index(2, 0)).center();
        if (box.view()->isVisible()) {
            QTest::mouseMove(box.view()->viewport(), place);
            QTest::mouseClick(box.view()->viewport(), Qt::LeftButton, {}, place);
        }
        return m_pMap->Enum("E").GetIntValue() == 2;
    }));
}

TEST_F(NodeMapEditors, LeaveTheWheelToTheListUnlessTheyWereChosen)
{
    ShowMap("Category Root { pFeature I; pFeature B; pFeature F }\nInteger I { Value 5; Min 0; Max 9; "
            "Representation Linear }\n"
            "Boolean B { Value false }\nFloat F { Value 5; Min 0; Max 9 }");
    for (QWidget* const pEditor :
         std::initializer_list<QWidget*>{&Get<QSpinBox>("I"), &Get<QSlider>("I"), &Get<QComboBox>("B"),
                                         &Get<QDoubleSpinBox>("F"), &Get<QSlider>("F")})
    {
        pEditor->clearFocus();
        Wheel(*pEditor);
    }
    EXPECT_EQ(Int("I"), 5);
    EXPECT_EQ(m_pMap->Flt("F").GetValue(), 5);
    EXPECT_FALSE(m_pMap->Get<GenApi::IBoolean>("B").GetValue());

    Dialog().activateWindow();
    Get<QSpinBox>("I").setFocus();
    Wheel(Get<QSpinBox>("I"));
    EXPECT_EQ(Int("I"), 6);
}

TEST_F(NodeMapEditors, ShowFloatsAsFarAsEditorsCan)
{
    ShowMap(
        "Category Root { pFeature One; pFeature Zero; pFeature Log; pFeature Odd }\n"
        "Float One { Value 3; Min 3; Max 3 }\n"
        "Float Zero { Value 2; Min 0; Max 4; DisplayPrecision 0 }\n"
        "Float Log { Value 8; Min 1; Max 1000; Representation Logarithmic }\n"
        "Float Odd { pValue OddReg } FloatReg OddReg { Address 0x40; Length 8; AccessMode RW; pPort Device; "
        "Endianess LittleEndian }");
    EXPECT_EQ(Get<QDoubleSpinBox>("One").value(), 3);
    EXPECT_EQ(Get<QDoubleSpinBox>("Zero").singleStep(), 0.1);
    auto& log = dynamic_cast<CCustomPropertyGridProperty_Float&>(Property("Log"));
    EXPECT_EQ(log.GetMinForSlider(), 4);
    EXPECT_EQ(log.GetMaxForSlider(), 16);
    EXPECT_EQ(log.GetCurrentInc(), 4);
    for (const double d : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::max()})
    {
        FakePort::Bytes bytes(sizeof(d));
        std::memcpy(bytes.data(), &d, sizeof(d));
        m_pMap->port.Put(0x40, bytes);
        m_pMap->Get("OddReg").InvalidateNode();
        Property("Odd").UpdateDisplayValue();
        QTextEdit page;
        Property("Odd").UpdateDescription(&page);
    }
}

TEST_F(NodeMapEditors, OfferTheEntriesThatAreAvailableNow)
{
    ShowMap("Category Root { pFeature E; pFeature Many }\nInteger A { Value 1 }\n"
            "Enumeration E { EnumEntry On { pIsAvailable A; Value 1 } EnumEntry Off { Value 0 } EnumEntry "
            "Never { "
            "pIsImplemented N; Value 2 } Value 1 }\nInteger N { Value 0 }\nEnumeration Many { " +
            [] {
                std::string entries;
                for (int i = 0; i < 500; ++i)
                    entries += "EnumEntry X" + std::to_string(i) + " { Value " + std::to_string(i) + " } ";
                return entries;
            }() +
            "Value 499 }");
    EXPECT_EQ(Get<QComboBox>("E").currentText(), "On");
    EXPECT_EQ(Get<QComboBox>("E").count(), 2);
    EXPECT_EQ(Get<QComboBox>("Many").currentText(), "X499");
    m_pMap->Int("A") = 0;
    Property("E").UpdateDisplayValue();
    EXPECT_EQ(Get<QComboBox>("E").currentText(), "");
    EXPECT_EQ(Get<QComboBox>("E").count(), 1);
}

TEST_F(NodeMapEditors, ShowTheFirstBytesOfRegisters)
{
    ShowMap(
        "Category Root { pFeature R3; pFeature R16; pFeature R20; pFeature Empty; pFeature Huge; pFeature "
        "Gone }\n"
        "Register R3 { at 0x10 3 RW } Register R16 { at 0x10 16 RW } Register R20 { at 0x10 20 RO }\n"
        "Register Empty { Address 0; pLength None; AccessMode RO; pPort Device } Integer None { Value 0 }\n"
        "Register Huge { at 0x10 1048576 RW }\nInteger A { Value 1 }\n"
        "Register Gone { pIsAvailable A; at 0x10 1 RO }");
    const std::string zeros = "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00";
    for (const char* const szRow : {"R3", "R16", "Empty"})
        EXPECT_EQ(Label(szRow), zeros) << szRow;
    EXPECT_EQ(Label("R20"), zeros + " ...");
    EXPECT_EQ(Label("Huge"), zeros + " ...");
    m_pMap->Int("A") = 0;
    EXPECT_EQ(Label("Gone"), "Not Available");
    m_pMap->Int("A") = 1;
    m_pMap->Int("A") = 0;
    EXPECT_EQ(Label("Gone"), zeros); // told once in a row's life
}

TEST_F(NodeMapEditors, KeepTheirDisplayWhenTheDeviceFails)
{
    ShowMap("Category Root { pFeature I; pFeature M; pFeature E; pFeature S; pFeature There }\n"
            "Integer I { pValue IReg; Min 0; Max 1000; Representation Linear } IntReg IReg { at 0x10 4 RW; "
            "Cachable NoCache; Little }\n"
            "Integer M { Value 3; Min 0; pMax IReg; Representation Linear }\n"
            "Enumeration E { EnumEntry A { Value 0 } EnumEntry B { Value 1 } pValue EReg }\n"
            "IntReg EReg { at 0x20 4 RW; Little }\n"
            "StringReg S { Address 0x100; Length 8; AccessMode RW; pPort Device; Cachable NoCache }\n"
            "Integer There { pIsImplemented IReg; Value 1 }");
    m_pMap->Int("I") = 42;
    const auto fail = [] { throw RUNTIME_EXCEPTION("unplugged"); };
    m_pMap->port.onRead = fail;
    m_pMap->port.onWrite = fail;
    for (const char* const szRow : {"I", "M", "E", "S"})
        m_pMap->Get(szRow).InvalidateNode();
    EXPECT_EQ(Get<QSpinBox>("I").value(), 42);
    Type(Get<QSpinBox>("I"), "7");
    Type(Get<QLineEdit>("S"), "text");
    Get<QSlider>("I").setValue(9); // this one and the next aren't dropped
    Get<QComboBox>("E").setCurrentIndex(1);
    EXPECT_GT(m_log.Count(KxGUICallbackType_Error), 0U);
    m_pWnd->SetEnablePolling(true);
    for (const bool bAlphabetic : {true, false}) { // which makes the rows anew
        m_pWnd->SetAlphabeticMode(bAlphabetic);
        Settle();
    }
    EXPECT_EQ(Grid().topLevelItemCount(), 5) << "those too of which nobody knows whether they are there";

    m_pMap->port.onRead = m_pMap->port.onWrite = nullptr;
    m_pWnd->Refresh();
    Settle();
    EXPECT_EQ(Get<QSpinBox>("I").value(), 42);
}

TEST_F(NodeMapEditors, TakeTheBoundsOf64Bits)
{
    ShowMap("Category Root { pFeature Low; pFeature All }\n"
            "Integer Low { Value -9223372036854775808; Min -9223372036854775808; Max 4; Inc 3; "
            "Representation Linear }\n"
            "Integer All { Value 9223372036854775807; Min -9223372036854775808; Max 9223372036854775807; "
            "Representation Linear }");
    auto& low = dynamic_cast<CCustomPropertyGridProperty_Integer&>(Property("Low"));
    low.setValueForSpinbox(4);
    EXPECT_EQ(Int("Low"), 4);
    EXPECT_EQ(Get<QLineEdit>("All").text(), "9223372036854775807");
    Type(Get<QLineEdit>("All"), "-9223372036854775808");
    EXPECT_EQ(Int("All"), std::numeric_limits<int64_t>::min());
}

} // namespace
} // namespace KxTest
