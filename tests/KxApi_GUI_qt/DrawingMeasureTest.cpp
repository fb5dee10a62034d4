// SPDX-License-Identifier: Apache-2.0
// Measured values by other arithmetic, and where their labels stand.
#include "DrawingTest.h"
#include "drawing/shapes/KxDrawingItemBezier_qt.h"

#include <gmock/gmock.h>

#include <QFontMetrics>
#include <QImage>
#include <QPaintEngine>
#include <cmath>
#include <random>

namespace KxTest
{
namespace
{

using namespace KxApi;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr double kPi = 3.14159265358979323846;
// Unlike in both directions, so that neither can be forgotten.
constexpr double kUnitX = 0.5;
constexpr double kUnitY = 3.0;

/// Notes the texts that are painted and where their boxes begin.
class CTextRecorder : public QImage
{
public:
    CTextRecorder()
        : QImage(kImageWidth, kImageHeight, Format_RGB32)
    {}

    struct CText
    {
        QString strText;
        QPointF ptBaseline;
    };
    std::vector<CText> texts;

    QPaintEngine* paintEngine() const override { return &m_engine; }

private:
    class CEngine : public QPaintEngine
    {
    public:
        explicit CEngine(std::vector<CText>& texts)
            : QPaintEngine(AllFeatures)
            , m_texts(texts)
        {}
        bool begin(QPaintDevice*) override { return true; }
        bool end() override { return true; }
        void updateState(const QPaintEngineState&) override {}
        void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
        void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
        void drawPath(const QPainterPath&) override {}
        void drawTextItem(const QPointF& pt, const QTextItem& item) override
        {
            m_texts.push_back({item.text(), pt});
        }
        Type type() const override { return User; }

    private:
        std::vector<CText>& m_texts;
    };
    mutable CEngine m_engine{texts};
};

class DrawingMeasure : public DrawingTest
{
protected:
    DrawingMeasure()
    {
        Node<GenApi::CFloatPtr>("ConversionX")->SetValue(kUnitX);
        Node<GenApi::CFloatPtr>("ConversionY")->SetValue(kUnitY);
    }

    /// Labels as "text@x,y", the place being the corner of the box that the alignment puts on the anchor.
    std::vector<std::string> Labels(const std::vector<int>& alignments)
    {
        CTextRecorder recorder;
        QPainter painter(&recorder);
        Paint(painter);
        std::vector<std::string> labels;
        QFont font;
        font.setFamily("");
        font.setPixelSize(24);
        const QFontMetrics metrics(font);
        for (size_t i = 0; i < recorder.texts.size(); ++i) {
            const CTextRecorder::CText& text = recorder.texts[i];
            const QRect rcBox = metrics.boundingRect(text.strText);
            const int nAlignment = alignments.size() > i ? alignments[i] : 0x21;
            const double x = text.ptBaseline.x() + ((nAlignment & 0x02) != 0 ? rcBox.width() : 0);
            const double y =
                text.ptBaseline.y() - metrics.ascent() + ((nAlignment & 0x40) != 0 ? rcBox.height() : 0);
            labels.push_back(
                QString("%1@%2,%3").arg(text.strText).arg(qRound(x)).arg(qRound(y)).toStdString());
        }
        return labels;
    }
};

TEST_F(DrawingMeasure, LengthsAndAreasAgreeWithOtherArithmetic)
{
    Add("Ellipse", {{100, 100}, {700, 200}}); // 300 each way: a circle
    EXPECT_NEAR(Measured(0).vecLengths.at(0), 300 * kPi, 1e-9);
    EXPECT_NEAR(Measured(0).dArea, 300.0 * 300.0 * kPi / 4, 1e-6);
    Add("Arc", {{100, 100}, {700, 200}, {700, 150}, {400, 250}}); // a quarter or three of that circle
    EXPECT_NEAR(Measured(1).vecLengths.at(0), 300 * kPi * 0.75, 1e-6);
    Add("Arc", {{100, 100}, {500, 200}, {500, 150}, {300, 250}});
    EXPECT_THAT(Measured(2).vecLengths, IsEmpty()) << "no circle";

    // A bow tie, whose halves count against each other: 2000 pixels of 0.5 by 3.
    Add("Polygon", {{0, 0}, {100, 100}, {100, 0}, {0, 60}});
    EXPECT_NEAR(Measured(3).dArea, 3000, 1e-6);
    Add("Polygon", {{5, 5}, {5, 5}, {5, 5}});
    EXPECT_EQ(Measured(4).dArea, 0);
    EXPECT_EQ(Measured(4).vecLengths.at(0), 0);

    // Distances from a slanted line, in units: by the area of the triangle over its base.
    Add("Perpendicular", {{100, 100}, {500, 200}, {300, 300}, {600, 50}});
    const auto distance = [](double x, double y) {
        const double ax = 50, ay = 300, bx = 250, by = 600;
        return std::abs((bx - ax) * (y * kUnitY - ay) - (by - ay) * (x * kUnitX - ax)) /
               std::hypot(bx - ax, by - ay);
    };
    ASSERT_EQ(Measured(5).vecLengths.size(), 2U);
    EXPECT_NEAR(Measured(5).vecLengths[0], distance(300, 300), 1e-9);
    EXPECT_NEAR(Measured(5).vecLengths[1], distance(600, 50), 1e-9);
}

TEST_F(DrawingMeasure, AnglesRunClockwiseThroughAllQuadrants)
{
    Node<GenApi::CFloatPtr>("ConversionAngle")->SetValue(2.0);
    Add("Angle", {{600, 250}, {500, 250}, {500, 250}});
    for (int nDegrees = 5; nDegrees < 360; nDegrees += 10) {
        const double dRadians = nDegrees * kPi / 180;
        Node("DrawingObjectPointSelector")->SetValue(2);
        Node<GenApi::CFloatPtr>("DrawingObjectPointX")
            ->SetValue((500 + 200 * std::cos(dRadians)) / kImageWidth);
        Node<GenApi::CFloatPtr>("DrawingObjectPointY")
            ->SetValue((250 + 200 * std::sin(dRadians)) / kImageHeight);
        EXPECT_NEAR(Measured().vecAngles.at(0), 2.0 * nDegrees, 1e-6);
    }
}

TEST_F(DrawingMeasure, BezierLengthsAreWithinTheTolerance)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(0, 100);
    for (int i = 0; i < 300; ++i) {
        const CDoublePoint a{place(random), 5 * place(random) - 250};
        const CDoublePoint b{place(random) + 100, 5 * place(random) - 250};
        const CDoublePoint c{place(random) + 200, place(random) - 50};
        double dLength = 0;
        CDoublePoint ptBefore;
        for (int n = 1; n <= 4000; ++n) {
            const double t = n / 4000.0;
            const CDoublePoint pt =
                a * (3 * (1 - t) * (1 - t) * t) + b * (3 * (1 - t) * t * t) + c * (t * t * t);
            dLength += (pt - ptBefore).Length();
            ptBefore = pt;
        }
        // Chords at most half a unit beside the curve.
        EXPECT_NEAR(CKxDrawingItemBezier::GetLength(a, b, c), dLength, 0.01 * dLength + 0.5);
    }
    EXPECT_EQ(CKxDrawingItemBezier::GetLength({}, {}, {}), 0);
    EXPECT_GT(CKxDrawingItemBezier::GetLength({1e300, 1}, {1, 1e300}, {}), 1e299);
    Add("Bezier", {{0, 0}, {100, 0}, {200, 0}, {300, 0}, {400, 0}, {500, 0}, {600, 100}, {9, 9}});
    EXPECT_GT(Measured().vecLengths.at(0), 150 + std::hypot(150.0, 300.0)) << "two curves";
}

TEST_F(DrawingMeasure, LabelsStandWhereTheyBelong)
{
    struct CRow
    {
        const char* szType;
        PointList points;
        std::vector<int> alignments;
        std::vector<std::string> labels;
    };
    // The pen is 2 wide. 200 by 50 pixels are 100 by 150 units.
    const std::vector<CRow> rows = {
        {"Line",
         {{300, 200}, {500, 250}},
         {0x42, 0x41, 0x22, 0x41},
         {"N@298,198", "100.0[pixels]@300,198", "150.0[pixels]@298,200", "180.3[pixels]@402,223"}},
        {"Line",
         {{500, 250}, {300, 200}},
         {0x21, 0x41, 0x22, 0x22},
         {"N@502,252", "100.0[pixels]@300,198", "150.0[pixels]@298,200", "180.3[pixels]@398,227"}},
        {"Rectangle",
         {{300, 250}, {500, 200}},
         {0x22, 0x41, 0x22, 0x21, 0x41},
         {"N@298,248", "100.0[pixels]@300,198", "150.0[pixels]@298,200", "500.0[pixels]@502,200",
          "15000.0[pixels 2]@502,250"}},
        {"Ellipse",
         {{300, 200}, {500, 250}},
         {0x42, 0x41, 0x22, 0x21, 0x41, 0x21},
         {"N@298,198", "100.0[pixels]@300,198", "150.0[pixels]@298,200", "396.6[pixels]@502,200",
          "11781.0[pixels 2]@502,250", "(400.0, 225.0)@400,225"}},
        {"Cross",
         {{300, 200}, {500, 250}},
         {0x42, 0x41, 0x22, 0x21},
         {"N@298,198", "100.0[pixels]@300,198", "150.0[pixels]@298,200", "(400.0, 225.0)@402,227"}},
        {"Text", {{300, 200}}, {0x21}, {"N@300,200"}},
        {"Angle", {{600, 200}, {500, 200}, {500, 300}}, {0x41, 0x42}, {"N@602,202", "90.0[degree]@498,198"}},
        {"Polygon",
         {{300, 200}, {500, 200}, {400, 250}},
         {0x42, 0x41, 0x22, 0x21, 0x41},
         {"N@298,198", "100.0[pixels]@300,198", "150.0[pixels]@298,200", "416.2[pixels]@502,200",
          "7500.0[pixels 2]@502,250"}},
        {"FreeHand",
         {{300, 200}, {500, 200}, {400, 250}},
         {0x42, 0x41, 0x22, 0x21},
         {"N@298,198", "100.0[pixels]@300,198", "150.0[pixels]@298,200", "258.1[pixels]@502,200"}},
        {"Perpendicular",
         {{300, 200}, {500, 200}, {400, 250}, {350, 150}},
         {0x42, 0x21, 0x41},
         {"N@298,148", "150.0[pixels]@404,252", "150.0[pixels]@354,148"}},
        {"Arc",
         {{300, 200}, {500, 250}, {450, 225}, {400, 240}},
         {0x42, 0x41, 0x22, 0x41, 0x22, 0x21},
         {"N@298,202", "100.0[pixels]@300,198", "150.0[pixels]@298,200", "0.0[degree]@452,223",
          "90.0[degree]@398,242", "(400.0, 225.0)@400,225"}},
        {"Bezier",
         {{300, 200}, {400, 200}, {500, 200}, {600, 200}},
         {0x42, 0x22},
         {"N@298,198", "150.0[pixels]@348,202"}},
    };
    for (const CRow& row : rows) {
        SCOPED_TRACE(row.szType);
        Node("DrawingObjectsCount")->SetValue(0);
        Add(row.szType, row.points, 0x7F);
        Set("DrawingObjectName", "N");
        EXPECT_THAT(Labels(row.alignments), ::testing::ElementsAreArray(row.labels));
    }
    // Of an arc, box labels want one of their own.
    Node("DrawingObjectsCount")->SetValue(0);
    Add("Arc", {{300, 200}, {500, 250}, {450, 225}, {400, 240}}, 0x51);
    EXPECT_EQ(Labels({}).size(), 3U);
}

TEST_F(DrawingMeasure, UnitsAndDigitsAreTheUsers)
{
    Add("Rectangle", {{100, 100}, {300, 150}}, 0x28);
    Set("TextOfLengthUnit", " %");
    Set("TextOfAreaUnit", " %%d");
    Node("PrecisionForLength")->SetValue(0);
    Node("PrecisionForArea")->SetValue(6);
    EXPECT_THAT(Labels({}),
                ElementsAre(::testing::StartsWith("500 %@"), ::testing::StartsWith("15000.000000 %d@")));
    for (const std::string& strUnit : {std::string(64, '%'), std::string(32, '\xC3'), std::string("%s%n%d")})
    {
        Set("TextOfLengthUnit", strUnit);
        EXPECT_GE(Labels({}).size(), 2U);
    }
    Set("DrawingObjectName", std::string(255, 'n'));
    EXPECT_EQ(Get("DrawingObjectName").size(), 255U);
    Painted();
}

} // namespace
} // namespace KxTest
