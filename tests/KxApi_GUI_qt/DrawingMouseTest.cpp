// SPDX-License-Identifier: Apache-2.0
// Building, selecting and changing objects by mouse and keys.
#include "DrawingTest.h"

#include <gmock/gmock.h>

#include <QDialog>
#include <QMenu>
#include <QSpinBox>
#include <QTest>

namespace KxTest
{
namespace
{

using namespace KxApi;
using ::testing::ElementsAre;
using ::testing::Pair;
using ::testing::SizeIs;

class DrawingMouse : public DrawingTest
{
protected:
    void Draw(const char* szType) { Set("DrawingItemType", szType); }
};

TEST_F(DrawingMouse, BuildsEachShapeWithItsSteps)
{
    struct CRow
    {
        const char* szType;
        int nDrags;
        size_t nPoints;
    };
    for (const CRow& row :
         {CRow{"Line", 1, 2}, CRow{"Rectangle", 1, 2}, CRow{"Ellipse", 1, 2}, CRow{"Text", 1, 1},
          CRow{"Angle", 2, 3}, CRow{"Polygon", 4, 5}, CRow{"Perpendicular", 3, 4}, CRow{"Arc", 3, 4},
          CRow{"Bezier", 3, 8}, CRow{"FreeHand", 1, 2}, CRow{"Cross", 1, 2}})
    {
        SCOPED_TRACE(row.szType);
        Node("DrawingObjectsCount")->SetValue(0);
        Draw(row.szType);
        for (int i = 0; i < row.nDrags; ++i) {
            EXPECT_EQ(Get("DrawingItemType"), row.szType);
            DragBy(100 + 50 * i, 100, 140 + 50 * i, 120);
        }
        if (Get("DrawingItemType") != "Select")
            Release(0, 0, Qt::RightButton); // ends what has no number of steps
        EXPECT_EQ(Get("DrawingItemType"), "Select");
        EXPECT_THAT(Points(), SizeIs(row.nPoints));
        EXPECT_THAT(Selection(), ElementsAre(true));
        EXPECT_THAT(Points()[0], Pair(100, 100));
    }
}

TEST_F(DrawingMouse, SelectsMovesAndDragsWithoutAskingForTheShape)
{
    Add("Rectangle", {{100, 100}, {200, 200}});
    Add("Line", {{300, 100}, {400, 200}});
    Draw("Select");
    EXPECT_EQ(CursorAt(150, 150), Qt::PointingHandCursor) << "the inside of a box";
    EXPECT_EQ(CursorAt(350, 150), Qt::PointingHandCursor);
    EXPECT_EQ(CursorAt(306, 100), Qt::CrossCursor);
    EXPECT_EQ(CursorAt(250, 50), Qt::ArrowCursor);
    EXPECT_EQ(CursorAt(203, 97), Qt::CrossCursor) << "a corner that isn't a point";
    EXPECT_EQ(CursorAt(300, 93), Qt::ArrowCursor) << "seven pixels are too far";

    DragBy(150, 150, 160, 170);
    EXPECT_THAT(Points(), ElementsAre(Pair(110, 120), Pair(210, 220)));
    EXPECT_THAT(Selection(), ElementsAre(true, false));
    DragBy(110, 220, 90, 240); // x of the first point, y of the second
    EXPECT_THAT(Points(), ElementsAre(Pair(90, 120), Pair(210, 240)));
    DragBy(400, 200, 450, 210);
    EXPECT_THAT(Points(), ElementsAre(Pair(300, 100), Pair(450, 210)));
    EXPECT_THAT(Selection(), ElementsAre(false, true));

    DragBy(50, 50, 600, 400); // the rubber band
    EXPECT_THAT(Selection(), ElementsAre(true, true));
    EXPECT_TRUE(Press(700, 20));
    Release(700, 20);
    EXPECT_THAT(Selection(), ElementsAre(false, false));

    Set("DrawingObjectIsLocked", "1");
    EXPECT_EQ(CursorAt(450, 210), Qt::ArrowCursor);
    Press(375, 155); // the line's middle
    Release(375, 155);
    EXPECT_THAT(Selection(), ElementsAre(false, false));
    Press(150, 150);
    Release(150, 150);
    EXPECT_TRUE(PressKey(Qt::Key_Delete));
    EXPECT_EQ(Get("DrawingObjectsCount"), "1");
    EXPECT_EQ(Get("DrawingObjectType"), "Line");
    EXPECT_THAT(Selection(), ElementsAre(true));
    Draw("None");
    EXPECT_FALSE(Press(450, 210));
    EXPECT_FALSE(Move(450, 210));
    EXPECT_FALSE(PressKey(Qt::Key_Delete));
    Node("DrawingObjectsCount")->SetValue(0);
    Draw("Select");
    EXPECT_FALSE(Press(10, 10));
    EXPECT_FALSE(Release(10, 10));
}

TEST_F(DrawingMouse, ShiftMakesLevelDiagonalAndSquare)
{
    const auto drawn = [this](const char* szType, QPoint ptTo) {
        Draw(szType);
        Press(100, 100);
        QTest::keyPress(&m_widget, Qt::Key_Shift, Qt::ShiftModifier);
        Move(ptTo.x(), ptTo.y());
        QTest::keyRelease(&m_widget, Qt::Key_Shift);
        Release(ptTo.x(), ptTo.y());
        return Points()[1];
    };
    m_widget.show();
    EXPECT_THAT(drawn("Line", {300, 149}), Pair(300, 100));
    EXPECT_THAT(drawn("Line", {140, 300}), Pair(100, 300));
    EXPECT_THAT(drawn("Line", {200, 180}), Pair(180, 180));
    EXPECT_THAT(drawn("Rectangle", {300, 149}), Pair(149, 149));
    EXPECT_THAT(drawn("Ellipse", {90, 180}), Pair(90, 110)) << "by signed values";
}

TEST_F(DrawingMouse, GoesOnWhateverFeaturesDoMeanwhile)
{
    Draw("Polygon");
    Press(100, 100);
    Node("DrawingObjectPointCount")->SetValue(0);
    Move(200, 200);
    Release(200, 200);
    Node<GenApi::CCommandPtr>("RemoveDrawingObject")->Execute();
    Press(250, 250);
    Move(260, 260);
    Node("DrawingObjectsCount")->SetValue(3);
    Node("DrawingObjectsCount")->SetValue(0);
    Move(260, 260);
    Release(260, 260);
    Add("Bezier", {{1, 1}, {2, 2}});
    Set("DrawingObjectType", "Arc");
    Node("DrawingObjectPointCount")->SetValue(1);
    Painted();
    Draw("Select");
    DragBy(1, 1, 30, 30);
    EXPECT_EQ(m_pTool->GetMeasurements().size(), 1U);
    for (const char* const szType : {"Line", "Rectangle", "Ellipse", "Text", "Angle", "Polygon",
                                     "Perpendicular", "Arc", "Bezier", "FreeHand", "Cross"})
    {
        for (const int64_t nPoints : {0, 1, 2, 3, 5, 65534}) {
            Set("DrawingObjectType", szType);
            Node("DrawingObjectPointCount")->SetValue(nPoints);
            DragBy(0, 0, 2, 2);
            m_pTool->GetMeasurements();
            if (nPoints < 10)
                Painted();
        }
    }
    Node("DrawingObjectPointSelector")->SetValue(0);
    for (const char* const szType : {"Line", "Text", "Bezier"}) { // far outside
        Set("DrawingObjectType", szType);
        for (const double dPlace : {-1.0, 2.0})
            Node<GenApi::CFloatPtr>("DrawingObjectPointX")->SetValue(dPlace);
        Painted(4.0);
    }
}

TEST_F(DrawingMouse, MenuOffersSevenDialogsAndTheyChangeTheStyle)
{
    Add("Line", {{100, 100}, {200, 200}});
    Draw("Select");
    std::vector<std::string> texts;
    const CDialogAnswers answers({[&](QWidget& menu) {
                                      for (QAction* const pAction : menu.actions()) {
                                          texts.push_back(
                                              pAction->isSeparator() ? "-" : pAction->text().toStdString());
                                          if (texts.back() == "Selected Objects Line ...")
                                              dynamic_cast<QMenu&>(menu).setActiveAction(pAction);
                                      }
                                      QTest::keyClick(&menu, Qt::Key_Return);
                                  },
                                  [](QWidget& dialog) {
                                      dialog.findChild<QSpinBox*>("spinBoxWidth")->setValue(9);
                                      dynamic_cast<QDialog&>(dialog).accept();
                                  }});
    EXPECT_FALSE(Release(10, 10, Qt::RightButton));
    EXPECT_THAT(texts, ElementsAre("Grid Line ...", "-", "Default Line ...", "Default Brush ...",
                                   "Default Font ...", "-", "Selected Objects Line ...",
                                   "Selected Objects Brush ...", "Selected Objects Font ..."));
    EXPECT_EQ(Get("DrawingLineWidth"), "9");
    EXPECT_EQ(m_pTool->GetDefaultLineSize(), 2);
}

// The system asks for the menu at the press already.
TEST_F(DrawingMouse, AClickOfTheRightButtonEndsAnObjectWithoutAMenu)
{
    Draw("Polygon");
    DragBy(100, 100, 200, 100);
    Press(50, 50, Qt::RightButton);
    EXPECT_TRUE(m_pTool->OnContextMenuRequested({400, 300}));
    EXPECT_EQ(Get("DrawingItemType"), "Select");
    int nEntries = 0;
    const CDialogAnswers answers({[&](QWidget& menu) {
        nEntries = menu.actions().size();
        menu.close();
    }});
    EXPECT_TRUE(Release(50, 50, Qt::RightButton));
    EXPECT_EQ(nEntries, 0);
    EXPECT_FALSE(Release(50, 50, Qt::RightButton)) << "of another click";
    EXPECT_EQ(nEntries, 9);
}

} // namespace
} // namespace KxTest
