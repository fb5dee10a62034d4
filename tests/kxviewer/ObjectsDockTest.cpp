// SPDX-License-Identifier: Apache-2.0
// The viewer's table of what is drawn: its values, as text and as a file, and the selection.
#include "ObjectsDock.h"

#include "CameraView.h"
#include "RunReport.h"
#include "Support.h"

#include <KxApi_GUI/IKxDrawingMeasurements.h>
#include <KxApi_GUI/IKxDrawingTool.h>

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <memory>

namespace KxTest
{
namespace
{

using namespace KxApi;

class ObjectsDocks : public GuiTest
{
protected:
    ObjectsDocks()
    {
        processEventGUI(false, 0); // makes the application object
        m_pView = std::make_unique<CameraView>(m_report, nullptr);
        m_pView->show();
        m_pView->Window().RegisterIKxImage(MakeImage(200, 100)->GetIKxImage());
        m_pDock = std::make_unique<ObjectsDock>(nullptr);
        m_pDock->Follow(*m_pView);
        m_pDock->show();
        Set("DrawingObjectsCount", "2");
        Draw("0", "Rectangle", "edge, \"A\"");
        Draw("1", "Line", "");
    }
    void Set(const char* szName, const char* szValue)
    {
        GenApi::CValuePtr(m_pView->Window().GetINodeMap()->GetNode(szName))->FromString(szValue);
    }
    /// From a quarter of the image to its middle: 50 by 25 pixels.
    void Draw(const char* szObject, const char* szType, const char* szName)
    {
        Set("DrawingObjectSelector", szObject);
        Set("DrawingObjectType", szType);
        Set("DrawingObjectName", szName);
        for (const auto& [szPoint, szPlace] : {std::pair{"0", "0.25"}, std::pair{"1", "0.5"}}) {
            Set("DrawingObjectPointSelector", szPoint);
            Set("DrawingObjectPointX", szPlace);
            Set("DrawingObjectPointY", szPlace);
        }
    }
    QTableWidget& Table() { return *m_pDock->findChild<QTableWidget*>(); }

    RunReport m_report;
    std::unique_ptr<CameraView> m_pView;
    std::unique_ptr<ObjectsDock> m_pDock;
};

constexpr const char* kTable = "Name,Type,Length,Area,Angle,Position\n"
                               "\"edge, \"\"A\"\"\",Rectangle,150.0 px,1250.00 px 2,,\"(50.0, 25.0)\"\n"
                               ",Line,55.9 px,,,\"(50.0, 25.0)\"\n";

TEST_F(ObjectsDocks, TellTheValuesAsTextAndAsAFile)
{
    Set("TextOfLengthUnit", " px");
    Set("TextOfAreaUnit", " px 2");
    Set("PrecisionForArea", "2");
    ASSERT_TRUE(PumpUntil([this] { return m_pDock->Text(',') == kTable; }))
        << m_pDock->Text(',').toStdString();

    const QList<QPushButton*> buttons = m_pDock->findChildren<QPushButton*>();
    ASSERT_EQ(buttons.size(), 2);
    buttons[0]->click();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), m_pDock->Text('\t'));
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains("\tLine\t55.9 px\t\t\t(50.0, 25.0)\n"));

    const QTemporaryDir folder;
    const CDialogAnswers answers({CDialogAnswers::NameFile(folder.filePath("values"), "")});
    buttons[1]->click();
    QFile file(folder.filePath("values.csv"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), kTable);

    // Seen as the user's language writes numbers; other programs get theirs as ever.
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    Set("DrawingObjectsCount", "0"); // for the table to be written anew
    EXPECT_TRUE(PumpUntil([this] { return Table().rowCount() == 0; }));
    Set("DrawingObjectsCount", "2");
    Draw("0", "Rectangle", "edge, \"A\"");
    Draw("1", "Line", "");
    EXPECT_TRUE(PumpUntil([this] { return m_pDock->Text(',') == kTable; }));
    EXPECT_EQ(Table().item(0, 3)->text(), "1250,00 px 2");
    EXPECT_EQ(Table().item(0, 5)->text(), "(50,0; 25,0)");
    QLocale::setDefault(before);
}

TEST_F(ObjectsDocks, ShareTheSelectionWithTheDrawing)
{
    const auto selected = [this](int nRow) {
        return PumpUntil([&] { return Table().rowCount() == 2 && Table().item(nRow, 0)->isSelected(); });
    };
    EXPECT_TRUE(selected(1)) << "the one that was drawn last";
    emit Table().cellClicked(0, 0);
    EXPECT_TRUE(selected(0));
    EXPECT_FALSE(Table().item(1, 0)->isSelected());
    const auto values =
        dynamic_cast<IKxDrawingMeasurements&>(*m_pView->Window().GetIKxDrawingTool()).GetMeasurements();
    EXPECT_TRUE(values[0].bSelected);
    Set("DrawingObjectsCount", "0");
    EXPECT_TRUE(PumpUntil([this] { return Table().rowCount() == 0; }));
    m_pDock->Unfollow();
}

} // namespace
} // namespace KxTest
