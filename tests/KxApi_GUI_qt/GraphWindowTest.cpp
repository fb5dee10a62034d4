// SPDX-License-Identifier: Apache-2.0
// The graph window: its features against its port, its settings, and what it does with data.
#include "WindowTest.h"
#include "graph/KxDisplayGraphWnd_qt.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QScrollBar>
#include <QStringList>
#include <QTemporaryDir>

namespace KxTest
{
namespace
{

using namespace KxApi;
using ::testing::ElementsAre;
using List = CKxAutoPtr<IKxGraphDataBufferListResizable>;

List MakeList(std::vector<std::vector<uint32_t>> items, CKxGraphDataDescription description = {})
{
    List pList(CreateIKxGraphDataBufferListResizable(nullptr));
    for (const auto& values : items)
        std::copy(values.begin(), values.end(), pList->Append(description, values.size()));
    return pList;
}

class GraphWindow : public WindowTest<IKxGraphDisplayWnd>
{
protected:
    GraphWindow()
        : WindowTest(KxWindowType_GraphDisplay)
    {}

    QWidget& Plot() const { return *WidgetOf(*m_pWnd)->findChild<QWidget*>("m_CDisplayGraphWidget"); }
    std::string StatusText()
    {
        QStringList listText;
        m_wnd.GetStatusBarText(listText);
        return listText.join("|").toStdString();
    }
    void PointAt(int nX) const { QCursor::setPos(WidgetOf(*m_pWnd)->mapToGlobal(QPoint(nX, 50))); }

    CKxDisplayGraphWnd& m_wnd = dynamic_cast<CKxDisplayGraphWnd&>(*m_pWnd);
};

TEST_F(GraphWindow, HasAPenForEachLineAndAFontForEachText)
{
    const auto pSelector = Node<GenApi::CEnumerationPtr>("LineInfoSelector");
    GenApi::StringList_t listLines;
    pSelector->GetSymbolics(listLines);
    ASSERT_EQ(listLines.size(), 129U);
    const char* const kFields[] = {"LineStyle", "LineWidth", "LineForegroundColor", "LineEndcap", "LineJoin"};
    for (int64_t nLine = 0; nLine < 129; ++nLine) {
        pSelector->SetIntValue(nLine);
        for (int64_t nField = 0; nField < 5; ++nField) {
            const int64_t nAddress = 0x3000 + nLine * 0x20 + nField * 4;
            const std::string strRegister = std::string(kFields[nField]) + "Reg";
            ASSERT_EQ(dynamic_cast<GenApi::IRegister*>(m_pMap->GetNode(strRegister.c_str()))->GetAddress(),
                      nAddress);
            EXPECT_EQ(Node(strRegister.c_str())->GetValue(), Read32(nAddress));
            Write32(nAddress, static_cast<uint32_t>((nLine + nField) % 3));
            EXPECT_EQ(Node(strRegister.c_str())->GetValue(true, true), (nLine + nField) % 3);
        }
        // What the application sets, the features show without being asked to read anew.
        Node<GenApi::CEnumerationPtr>("LineStyle")->GetIntValue();
        m_wnd.SetLineInfo(static_cast<size_t>(nLine), 0, 4);
        EXPECT_EQ(Node<GenApi::CEnumerationPtr>("LineStyle")->GetIntValue(), 4);
    }
    const auto pText = Node<GenApi::CEnumerationPtr>("TextInfoSelector");
    for (int64_t nText = 0; nText < 2; ++nText) {
        pText->SetIntValue(nText);
        EXPECT_EQ(Node("TextHeight")->GetValue(), 16);
        Node("TextHeight")->SetValue(20 + nText);
        EXPECT_EQ(Read32(0x500C + nText * 0x10), 20 + nText);
        Node<GenApi::CEnumerationPtr>("TextForegroundColorSelector")->FromString("Green");
        Node("TextForegroundColor")->SetValue(0x34);
        EXPECT_EQ(Read32(0x5000 + nText * 0x10), 0x3400U);
    }
    EXPECT_EQ(ErrorOf([this] { Read32(0x3000 + 5 * 4); }), "nIndex = 5 must be smaller than Max = 5");
    EXPECT_EQ(PlaceOfErrorOf([this] { Write32(0x500C, 0); }), "KxApi_GUI_qt/KxDisplayGraphWnd_qt");
    EXPECT_EQ(ErrorOf([this] { m_wnd.SetLineInfo(129, 0, 0); }),
              "eGraphLine = 129 must be smaller than Max = 129");
    EXPECT_EQ(ErrorOf([this] { m_wnd.SetLineInfo(0, -1, 0); }),
              "nIndex = -1 must be equal or greater than Min = 0");
    EXPECT_EQ(ErrorOf([this] { m_wnd.SetTextInfo(2, 0, 0); }), "eGraphText = 2 must be smaller than Max = 2");
    EXPECT_EQ(ErrorOf([this] { Write32(0x500C, 0); }), "nValue = 0 must be equal or greater than Min = 1");
    EXPECT_EQ(ErrorOf([this] { Write32(0x500C, 32); }), "nValue = 32 must be equal or smaller than Max = 31");
    Write32(0x3000, 6);
    EXPECT_EQ(Read32(0x3000), 4U) << "a style that there isn't is passed over";
    Write32(0x3000, 5);
    EXPECT_EQ(Read32(0x3000), 5U);
    unsigned char byte = 0;
    EXPECT_EQ(ErrorOf([&] { m_wnd.Read(&byte, 0x3000, 1); }),
              "Length = 1 must be equal or greater than Min = 4");
    int64_t nLength = 4;
    EXPECT_FALSE(m_wnd.mRead(&byte, 0x4011, &nLength));
}

TEST_F(GraphWindow, KeepsItsSettingsWithinTheirRanges)
{
    const CIKxWndPtrT<IKxGraphDisplayWnd> pOther(CreateIKxGraphDisplayWnd(nullptr));
    EXPECT_EQ(pOther->GetPlotWidth(), 512U);
    m_wnd.SetPlotWidth(8192);
    EXPECT_EQ(ErrorOf([this] { m_wnd.SetPlotWidth(8193); }),
              "nValue = 8193 must be equal or smaller than Max = 8192");
    EXPECT_EQ(m_wnd.GetPlotWidth(), 8192U);
    m_wnd.SetPlotMarginLeft(1024);
    EXPECT_EQ(ErrorOf([this] { m_wnd.SetPlotMarginTop(1025); }),
              "nValue = 1025 must be equal or smaller than Max = 1024");
    EXPECT_EQ(ErrorOf([this] { m_wnd.SetRefreshInterval(1001); }),
              "nInterval = 1001 must be equal or smaller than Max = 1000");
    EXPECT_EQ(ErrorOf([this] { m_wnd.SetFloatingPointDisplaySwitchingDigitNumber(11); }),
              "nValue = 11 must be equal or smaller than Max = 10");
    EXPECT_EQ(ErrorOf([this] { Write32(0x2080, 9000); }),
              "nValue = 9000 must be equal or smaller than Max = 8192");
    EXPECT_EQ(ErrorOf([this] { Write32(0x2028, 9); }), "Node is not writable.");
    EXPECT_FALSE(IsAvailable("PlotWidth"));
    EXPECT_FALSE(IsAvailable("ScrollHPosition"));
    m_wnd.SetPlotSizeAuto(false);
    EXPECT_TRUE(IsAvailable("PlotWidth"));
    EXPECT_EQ(Node("PlotWidth")->GetMax(), 4096) << "less than the setter takes";
    Node("PlotWidthMax")->SetValue(8192);
    EXPECT_EQ(Node("PlotWidth")->GetMax(), 8192);
    EXPECT_EQ(Node("PlotMarginLeft")->GetValue(), 1024);
    m_wnd.SetPlotMarginLeft(84);
    EXPECT_EQ(Node("PlotMarginLeft")->GetValue(), 84);
    Node<GenApi::CBooleanPtr>("EnableScaleXTextDrawing")->SetValue(false);
    EXPECT_EQ(m_wnd.GetDrawEnable(), 0xFFFFFF7FU);
    EXPECT_FALSE(m_wnd.isTranslucent());
    Node<GenApi::CBooleanPtr>("EnableBackgroundDrawing")->SetValue(false);
    EXPECT_TRUE(m_wnd.isTranslucent());
}

TEST_F(GraphWindow, TellsTheValuesUnderTheCursor)
{
    Show(m_wnd);
    m_wnd.SetUserStatusBarText("mine");
    EXPECT_EQ(StatusText(), "mine") << "no data yet";
    CKxGraphDataDescription red;
    red.eComponent = MakeKxPixelComponentType(KxPixelComponent_R, 8);
    List pList = MakeList({{7, 8, 9, 10}, {}, {1, 2}});
    *pList->Append(red, 1) = 5;
    m_wnd.RegisterIKxGraphDataBufferList(pList.Get());
    Pump();
    Plot().repaint();
    PointAt(0);
    EXPECT_EQ(StatusText(), "mine| [0]=7 [0]=1 R[0]=5");
    PointAt(639);
    EXPECT_EQ(StatusText(), "mine| [3]=10 [1]=2 R[0]=5");
    PointAt(84 + 540 / 2);
    EXPECT_EQ(StatusText(), "mine| [2]=9 [1]=2 R[0]=5");
    m_wnd.SetPlotMarginLeft(640 - 16);
    PointAt(639);
    EXPECT_EQ(StatusText(), "mine| [0]=7 [0]=1 R[0]=5") << "margins that leave no room";
}

TEST_F(GraphWindow, DrawsTheSamePlotForAllWhoAsk)
{
    m_wnd.RegisterIKxGraphDataBufferList(MakeList({{1, 5, 2, 900}}).Get());
    const auto pBuffer = ImageBufferPtr(CreateIKxImageBuffer(nullptr));
    m_wnd.SetPlotWidth(301); // lines of a picture whose bytes aren't filled up
    m_wnd.GetIKxImage(pBuffer.Get(), 7, 0);
    IKxImage& image = *pBuffer->GetIKxImage();
    ASSERT_EQ(image.GetImageWidth(), 84U + 301U + 16U);
    ASSERT_EQ(image.GetImageHeight(), 16U + 256U + 24U);
    const QImage picture(static_cast<const uchar*>(image.GetImageBuffer()), 401, 296,
                         static_cast<int>(image.GetImageLinePitch()), QImage::Format_RGB888);
    QImage drawn(401, 296, QImage::Format_RGB32);
    QPainter painter(&drawn);
    m_wnd.Draw(&painter, 401, 296);
    EXPECT_EQ(drawn.convertToFormat(QImage::Format_RGB888), picture);

    // Sizes without room, and far more than there is.
    for (const uint32_t nSize : {0U, 1U, 50U, 8192U, 0xFFFFFFFFU})
        m_wnd.Draw(&painter, nSize, nSize);
    m_wnd.SetPlotMarginLeft(1024);
    m_wnd.Draw(&painter, 300, 300);
    EXPECT_EQ(ErrorOf([this] { m_wnd.Draw(nullptr, 1, 1); }), "There is no painter to draw the graph with.");
    EXPECT_EQ(ErrorOf([this] { m_wnd.GetIKxImage(nullptr, 1, 1); }), "NULL pointer dereferenced");
    for (const auto set : {&CKxDisplayGraphWnd::SetPlotWidth, &CKxDisplayGraphWnd::SetPlotMarginLeft,
                           &CKxDisplayGraphWnd::SetPlotMarginRight})
        (m_wnd.*set)(0);
    EXPECT_EQ(ErrorOf([&] { m_wnd.GetIKxImage(pBuffer.Get(), 1, 1); }),
              "A graph of 0 x 296 pixels has no picture.");
}

TEST_F(GraphWindow, FitsThePlotOrScrolls)
{
    Show(m_wnd);
    EXPECT_EQ(Plot().size(), Plot().parentWidget()->size());
    WidgetOf(*m_pWnd)->resize(500, 300);
    Pump();
    EXPECT_EQ(Plot().width(), 500);
    EXPECT_EQ(Plot().size(), Plot().parentWidget()->size());
    EXPECT_EQ(m_wnd.GetScrollHMax(), 0);
    Node<GenApi::CBooleanPtr>("PlotSizeAuto")->SetValue(false);
    EXPECT_EQ(Plot().size(), QSize(612, 296));
    Pump();
    EXPECT_GT(m_wnd.GetScrollHMax(), 100);
    m_wnd.SetScrollHPosition(50);
    EXPECT_EQ(Node("ScrollHPosition")->GetValue(), 50);
    Node<GenApi::CBooleanPtr>("PlotSizeAuto")->SetValue(true);
    Pump();
    EXPECT_EQ(Plot().width(), 500);
    EXPECT_EQ(m_wnd.GetScrollHMax(), 0);
}

TEST_F(GraphWindow, PaintsAtOnceWithoutATimerAndElseAtItsTicks)
{
    m_wnd.SetRefreshInterval(0);
    Show(m_wnd);
    const QImage empty = Plot().grab().toImage();
    CPaintCounter paints(Plot());
    m_wnd.RegisterIKxGraphDataBufferList(MakeList({{1, 2, 3}}).Get());
    EXPECT_EQ(paints.nPaints, 1);
    m_wnd.RegisterIKxGraphDataBufferList(MakeList({{3, 2, 1}}).Get());
    EXPECT_EQ(paints.nPaints, 2);
    EXPECT_NE(Plot().grab().toImage(), empty);
    paints.nPaints = 0;
    Node("RefreshInterval")->SetValue(5);
    m_wnd.RegisterIKxGraphDataBufferList(MakeList({{3, 2, 1}}).Get());
    EXPECT_EQ(paints.nPaints, 0);
    EXPECT_TRUE(PumpUntil([&] { return paints.nPaints > 3; }))
        << "at each tick, whether there is news or not";

    // Without a background the lines before stay.
    m_wnd.RegisterIKxGraphDataBufferList(MakeList({{1000, 1000}}).Get());
    Node<GenApi::CBooleanPtr>("EnableBackgroundDrawing")->SetValue(false);
    PumpUntil([&, nBefore = paints.nPaints] { return paints.nPaints > nBefore + 4; });
    m_wnd.RegisterIKxGraphDataBufferList(MakeList({{1, 1000}}).Get());
    PumpUntil([&, nBefore = paints.nPaints] { return paints.nPaints > nBefore + 4; });
    const QImage both = Plot().grab().toImage();
    EXPECT_EQ(both.pixel(100, 16), 0xFF000000U) << "of the first data";
    EXPECT_EQ(both.pixel(both.width() - 30, 16), 0xFF000000U);
}

TEST_F(GraphWindow, SavesAndCopiesWhatItShows)
{
    const QTemporaryDir folder;
    m_wnd.RegisterIKxGraphDataBufferList(MakeList({{1, 5, 2, 900}}).Get());
    Show(m_wnd);
    auto* const pDialog = dynamic_cast<CBaseDialogEx*>(WidgetOf(*m_pWnd));
    const auto trigger = [&](const char* szMenu, const char* szAction) {
        for (QMenu* const pMenu : pDialog->findChildren<QMenu*>()) {
            for (QAction* const pAction : pMenu->actions()) {
                if (pMenu->title() == szMenu && pAction->text() == szAction)
                    return pAction->trigger();
            }
        }
        FAIL() << szMenu << szAction;
    };
    const auto save = [&](const char* szAction, const CDialogAnswers::Answer& answer) {
        const CDialogAnswers answers({answer});
        trigger("&Save", szAction);
    };
    const auto name = [&](const char* szName, const char* szFilter) {
        return CDialogAnswers::NameFile(folder.filePath(szName), szFilter);
    };
    save("&Image file ...", name("picture", "PNG File (*.png)"));
    EXPECT_EQ(QImage(folder.filePath("picture.png")).size(), QSize(612, 296));
    save("&Graph data file ...", name("data", "KxRaw File (*.kxraw)"));
    List pRead(CreateIKxGraphDataBufferListResizable(nullptr));
    pRead->LoadFromFile(folder.filePath("data.kxraw").toUtf8().constData());
    EXPECT_EQ(pRead->GetItem(0)->GetGraphData()->GetValues()[3], 900U);
    save("&Graph data file ...", [](QWidget& dialog) { dialog.close(); });
    trigger("Context menu", "&Copy");
    EXPECT_EQ(QApplication::clipboard()->image().size(), Plot().size());

    // The window ends while the user thinks.
    save("&Graph data file ...", [&](QWidget& dialog) {
        m_wnd.Close();
        QMetaObject::invokeMethod(&dialog, "reject", Qt::QueuedConnection);
    });
    EXPECT_FALSE(m_wnd.IsVisible());
}

TEST_F(GraphWindow, TakesDataWhileItPaintsAndSaves)
{
    const QTemporaryDir folder;
    const std::string strFile = folder.filePath("data.csv").toStdString();
    m_wnd.SetRefreshInterval(1);
    Show(m_wnd);
    // Each list is of one value, so that a mixture of two shows.
    const auto feed = [&](uint32_t nValue) {
        m_wnd.RegisterIKxGraphDataBufferList(
            MakeList({std::vector<uint32_t>(500 + nValue % 100, nValue)}).Get());
    };
    const auto pBuffer = ImageBufferPtr(CreateIKxImageBuffer(nullptr));
    const CThreads threads({
        [&](unsigned n) { feed(n); },
        [&](unsigned n) { feed(100000 + n); },
        [&](unsigned n) {
            m_wnd.SetLineInfo(113, 1, n % 5);
            m_wnd.SetPlotMarginLeft(n % 200);
            Node("ScaleXLineSize")->SetValue(n % 20);
            m_wnd.SetScaleLineSizeX(n % 7);
        },
        [&](unsigned) { m_wnd.GetIKxImage(pBuffer.Get(), 0, 0); },
    });
    for (int n = 0; n < 30; ++n) {
        Pump();
        if (n % 10 == 9) {
            m_wnd.Close();
            Show(m_wnd);
        }
        const IKxGraphDataBufferList& list = *m_wnd.GetGraphData(KxGraphDataIndex_Widget, true);
        for (size_t i = 0; i < list.GetCount(); ++i) {
            const IKxGraphData& data = *list.GetItem(i)->GetGraphData();
            EXPECT_EQ(data.GetValues()[0], data.GetValues()[data.GetLength() - 1]);
        }
        m_wnd.GetGraphData(KxGraphDataIndex_Save, true)->SaveToFile(KxGraphDataFileType_Csv, strFile.c_str());
    }
}

TEST_F(GraphWindow, KeepsItsDataWhenALotIsWrongWithNewOnes)
{
    m_wnd.RegisterIKxGraphDataBufferList(MakeList({{42}}).Get());
    EXPECT_EQ(ErrorOf([this] { m_wnd.RegisterIKxGraphDataBufferList(nullptr); }).empty(), false);
    struct CBad final : IKxGraphData, IKxGraphDataBuffer, IKxGraphDataBufferList
    {
        EKxGraphDataKind_t GetKind() const override { return static_cast<EKxGraphDataKind_t>(nKind); }
        size_t GetLength() const override { return 1; }
        const uint32_t* GetValues() const override { return &nValue; }
        int64_t GetProperty(EKxGraphDataProperty_t) const override { return 0; }
        IKxGraphData* GetGraphData() const override { return const_cast<CBad*>(this); }
        size_t GetCount() const override { return 1; }
        IKxGraphDataBuffer* GetItem(size_t) const override { return const_cast<CBad*>(this); }
        void SaveToFile(EKxGraphDataFileType_t, const GenICam::gcstring&) const override {}
        void CopyFrom(const IKxGraphDataBufferList*) override {}
        int nKind = 4;
        uint32_t nValue = 3;
    } bad;
    EXPECT_THROW(m_wnd.RegisterIKxGraphDataBufferList(&bad), GenICam::InvalidArgumentException);
    bad.nKind = 2; // with the divisor 0
    EXPECT_THROW(m_wnd.RegisterIKxGraphDataBufferList(&bad), GenICam::InvalidArgumentException);
    EXPECT_EQ(*m_wnd.GetGraphData(KxGraphDataIndex_Draw, true)->GetItem(0)->GetGraphData()->GetValues(), 42U);

    // An application's own lists may be drawn by nobody else's rules either.
    QImage image(300, 200, QImage::Format_RGB32);
    QPainter painter(&image);
    for (bad.nKind = 0; bad.nKind <= 4; ++bad.nKind)
        DrawGraphArea(painter, {}, {}, {}, bad);
    List pMany = MakeList({{}, {1}, {0xFFFFFFFF}});
    CKxGraphDataDescription full;
    full.eKind = KxGraphDataKind_LineProfile;
    full.nFullScale = 1; // which the values exceed
    for (int n = 0; n < 100; ++n)
        *pMany->Append(full, 1) = 0xFFFFFFFF;
    m_wnd.SetNormalization(KxGraphNomalization_Off);
    m_wnd.RegisterIKxGraphDataBufferList(pMany.Get());
    m_wnd.Draw(&painter, 300, 200);
}

} // namespace
} // namespace KxTest
