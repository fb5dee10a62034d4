// SPDX-License-Identifier: Apache-2.0
// Menus, context menu, toolbar and status bar of the image window.
#include "ImageViewSupport.h"
#include "image/DrawingToolBar_qt.h"

#include <KxApi_IP/IKxPixelFormatConverter.h>

#include <QComboBox>
#include <QLabel>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

namespace KxTest
{
namespace
{

using namespace KxApi;

class ImageMenu : public ImageViewTest
{
protected:
    void Choose(const QString& strText) const
    {
        Entry(strText)->trigger();
        Pump();
    }

    QMenu& ContextMenu() const
    {
        for (QMenu* const pMenu : Dialog().findChildren<QMenu*>()) {
            if (pMenu->title() == "Context menu")
                return *pMenu;
        }
        throw std::logic_error("no context menu");
    }
};

TEST_F(ImageMenu, MenuBarAndContextMenuHaveTheSameEntries)
{
    ShowWindow();
    for (const char* const szEntry :
         {"&Preview Image", "x 1/8", "Fit To The &Window", "Bi&cubic", "&Reverse Y"}) {
        ASSERT_NE(Entry(szEntry), nullptr) << szEntry;
        EXPECT_EQ(FindAction(ContextMenu(), szEntry), Entry(szEntry));
    }
}

TEST_F(ImageMenu, ZoomEntriesAndSettingsFollowEachOther)
{
    ShowWindow();
    ShowImage(MakeRamp(200, 100)->GetIKxImage());
    EXPECT_EQ(CheckedBeside("x 2"), QStringList("x 1"));

    Choose("x 2");
    EXPECT_EQ(m_pWnd->GetManualZoomMagnification(), 2);
    EXPECT_EQ(Widget().size(), QSize(400, 200));
    EXPECT_EQ(CheckedBeside("x 2"), QStringList("x 2"));
    Choose("x 2");
    EXPECT_EQ(CheckedBeside("x 2"), QStringList("x 2")) << "an entry can't be switched off";

    Choose("Fit To The &Window");
    EXPECT_EQ(m_pWnd->GetZoomMode(), KxZoomMode_FitToTheWindow);
    EXPECT_TRUE(Entry("Fit To The &Window")->isChecked());
    EXPECT_EQ(CheckedBeside("x 2"), QStringList());
    Choose("Fit To The &Window");
    EXPECT_TRUE(Entry("Fit To The &Window")->isChecked());

    Choose("x 1/8");
    EXPECT_EQ(m_pWnd->GetZoomMode(), KxZoomMode_FixedZoom);
    EXPECT_EQ(m_pWnd->GetManualZoomMagnification(), 0.125);
    EXPECT_FALSE(Entry("Fit To The &Window")->isChecked());

    m_pWnd->SetManualZoomMagnification(3);
    EXPECT_EQ(CheckedBeside("x 2"), QStringList()) << "no entry has 3";
    m_pWnd->SetManualZoomMagnification(16);
    EXPECT_EQ(CheckedBeside("x 2"), QStringList("x 16"));
    GenApi::CEnumerationPtr(m_pWnd->GetINodeMap()->GetNode("ZoomMode"))->FromString("FitToTheWindow");
    EXPECT_EQ(CheckedBeside("x 2"), QStringList());
    EXPECT_TRUE(Entry("Fit To The &Window")->isChecked());
}

TEST_F(ImageMenu, EntriesOfConverterAndStatusBarAndTheirSettingsFollowEachOther)
{
    ShowWindow();
    IKxPixelFormatConverter& converter = *m_pWnd->GetIKxPixelFormatConverter();
    for (int i = 0; i < 2; ++i) {
        Choose("&Bilinear 3");
        EXPECT_EQ(converter.GetBayerInterpolationMethod(), KxBayerInterpolationMethod_Bilinear3);
        EXPECT_EQ(CheckedBeside("&OFF"), QStringList("&Bilinear 3"));
    }
    converter.SetBayerInterpolationMethod(KxBayerInterpolationMethod_Bilinear2);
    EXPECT_EQ(CheckedBeside("&OFF"), QStringList("&Bilinear 2"));

    Choose("&Reverse Y");
    EXPECT_TRUE(converter.GetReverseY());
    GenApi::CBooleanPtr(converter.GetINodeMap()->GetNode("ReverseY"))->SetValue(false);
    EXPECT_FALSE(Entry("&Reverse Y")->isChecked());

    Choose("&Status Bar");
    EXPECT_FALSE(Dialog().findChild<QStatusBar*>()->isVisible());
    EXPECT_FALSE(m_pWnd->GetVisibleStatusBar());
}

TEST_F(ImageMenu, ChangesOfOtherThreadsArrive)
{
    ShowWindow();
    ShowImage(MakeRamp(200, 100)->GetIKxImage());
    const std::unique_ptr<QThread> pThread(QThread::create([this] {
        m_pWnd->SetManualZoomMagnification(4);
        m_pWnd->SetBackgroundColor(0x00FF00);
        m_pWnd->GetIKxPixelFormatConverter()->SetBayerInterpolationMethod(KxBayerInterpolationMethod_Bicubic);
        m_pWnd->GetIKxPixelFormatConverter()->SetReverseY(true);
        m_pWnd->SetVisibleStatusBar(false);
    }));
    pThread->start();
    ASSERT_TRUE(PumpUntil([&] { return pThread->isFinished(); }));
    Pump();
    EXPECT_EQ(CheckedBeside("x 2"), QStringList("x 4"));
    EXPECT_EQ(Widget().size(), QSize(800, 400));
    EXPECT_EQ(ScrollArea().getBackgroundColor(), QColor(0, 255, 0));
    EXPECT_EQ(CheckedBeside("&OFF"), QStringList("Bi&cubic"));
    EXPECT_TRUE(Entry("&Reverse Y")->isChecked());
    EXPECT_FALSE(Entry("&Status Bar")->isChecked());
    EXPECT_FALSE(Dialog().findChild<QStatusBar*>()->isVisible());
}

TEST_F(ImageMenu, SettingsMadeWhileNothingIsShownAreFoundAgain)
{
    m_pWnd->SetManualZoomMagnification(8);
    m_pWnd->SetBackgroundStyle(KxBackgroundStyle_None);
    m_pWnd->GetIKxPixelFormatConverter()->SetReverseY(true);
    m_pWnd->SetVisibleMenu(false);
    m_pWnd->SetVisibleStatusBar(false);
    m_pWnd->SetBuiltInDrawingToolbar(true);
    ShowWindow();
    EXPECT_EQ(CheckedBeside("x 2"), QStringList("x 8"));
    EXPECT_EQ(ScrollArea().getBrushStyle(), Qt::SolidPattern);
    EXPECT_TRUE(Entry("&Reverse Y")->isChecked());
    EXPECT_FALSE(static_cast<CBaseDialogEx&>(Dialog()).getMenu()->isVisible());
    EXPECT_FALSE(Dialog().findChild<QStatusBar*>()->isVisible());
    EXPECT_TRUE(Dialog().findChild<CDrawingToolBar*>()->isVisible());
    EXPECT_TRUE(Dialog().findChild<CDrawingToolBar*>()->isEnabled());
    m_pWnd->SetBuiltInDrawingToolbar(false);
    EXPECT_FALSE(Dialog().findChild<CDrawingToolBar*>()->isVisible());
}

TEST_F(ImageMenu, StatusBarShowsTextsThatAreNotEmpty)
{
    ShowWindow();
    const QList<QLabel*> labels = Dialog().findChild<QStatusBar*>()->findChildren<QLabel*>();
    ASSERT_EQ(labels.size(), 2);
    m_pWnd->SetUserStatusBarText("<b>gr\xC3\xBC\xC3\x9F"
                                 "e</b>");
    ASSERT_TRUE(PumpUntil([&] {
        return labels[0]->text() == QString::fromUtf8("<b>gr\xC3\xBC\xC3\x9F"
                                                      "e</b>");
    }));
    EXPECT_EQ(labels[0]->textFormat(), Qt::PlainText);
    m_pWnd->SetUserStatusBarText("");
    EXPECT_TRUE(PumpUntil([&] { return labels[0]->isHidden(); }));
    m_pWnd->SetUserStatusBarText("again");
    EXPECT_TRUE(PumpUntil([&] { return labels[0]->isVisible(); }));
    ShowImage(MakeRamp(20, 10)->GetIKxImage());
    EXPECT_TRUE(PumpUntil([&] { return labels[1]->text().contains("Mono8"); }))
        << qPrintable(labels[1]->text());
}

TEST_F(ImageMenu, ContextMenuOpensAtARightClickAndSurvivesItsWindow)
{
    ShowWindow();
    bool bOpened = false;
    QTimer::singleShot(0, &Dialog(), [&] {
        bOpened = ContextMenu().isVisible();
        m_pWnd.Reset();
    });
    emit Dialog().customContextMenuRequested(QPoint(50, 50));
    EXPECT_TRUE(bOpened);
    EXPECT_TRUE(PumpUntil([this] { return m_objLog.Count(KxGUICallbackType_Destroyed) == 1; }));
}

TEST_F(ImageMenu, ChildHasNoMenuBarButAContextMenu)
{
    QWidget parent;
    QVBoxLayout layout(&parent);
    parent.show();
    m_pWnd->Show(&parent, KxWindowMode_Child);
    Pump();
    EXPECT_EQ(static_cast<CBaseDialogEx&>(Dialog()).getMenu()->parentWidget(), nullptr);
    m_pWnd->SetVisibleMenu(false);
    m_pWnd->SetVisibleMenu(true);
    FindAction(ContextMenu(), "x 4")->trigger();
    EXPECT_EQ(m_pWnd->GetManualZoomMagnification(), 4);
}

TEST_F(ImageMenu, ExceptionsOfEntriesBecomeErrorEvents)
{
    ShowWindow();
    GenApi::Register(m_pWnd->GetIKxPixelFormatConverter()->GetINodeMap()->GetNode("BayerInterpolationMethod"),
                     [](GenApi::INode*) { throw RUNTIME_EXCEPTION("the application fails"); });
    std::string strError;
    m_objLog.onEvent = [&](IKxCallbackParamBase& param) {
        if (const auto* const pError = dynamic_cast<IKxCallbackParamKxApiGUIEventBaseWndError*>(&param))
            strError = pError->GetException().GetDescription();
    };
    Choose("Bi&cubic");
    EXPECT_EQ(strError, "the application fails");
    EXPECT_TRUE(m_pWnd->IsVisible());
}

TEST_F(ImageMenu, DrawingToolBarTellsToolsAndGridLines)
{
    CDrawingToolBar toolBar;
    for (const QAction* const pAction : toolBar.actions()) {
        const QImage icon = pAction->icon().pixmap(16, 16).toImage();
        int nPainted = 0;
        for (int i = 0; pAction->isCheckable() && i < 256; ++i)
            nPainted += qAlpha(icon.pixel(i % 16, i / 16)) != 0;
        EXPECT_TRUE(nPainted > 20 || !pAction->isCheckable()) << qPrintable(pAction->text());
    }
    EXPECT_TRUE(toolBar.actions()[0]->isChecked());

    QSignalSpy items(&toolBar, &CDrawingToolBar::itemTriggered);
    toolBar.actions()[12]->trigger();
    EXPECT_EQ(items.takeFirst().first().toInt(), KxDrawingItemType_Cross);
    EXPECT_FALSE(toolBar.actions()[0]->isChecked());
    toolBar.actions()[12]->trigger();
    EXPECT_TRUE(toolBar.actions()[12]->isChecked()) << "the button that is down stays down";

    QSignalSpy grids(&toolBar, &CDrawingToolBar::gridCountChosen);
    toolBar.SetGridCount(false, 7);
    EXPECT_TRUE(grids.isEmpty()) << "what is only shown isn't told";
    QComboBox& boxH = *toolBar.findChildren<QComboBox*>()[0];
    EXPECT_EQ(boxH.itemText(32), "H Line:32");
    EXPECT_EQ(boxH.count(), 33);
    EXPECT_EQ(toolBar.findChildren<QComboBox*>()[1]->currentText(), "V Line:7");
    boxH.setCurrentIndex(5);
    EXPECT_EQ(grids.takeFirst(), QVariantList({true, 5}));
}

} // namespace
} // namespace KxTest
