// SPDX-License-Identifier: Apache-2.0
// The viewer's histogram and line profile follow the shown image and what is drawn and selected on it.
#include "GraphDock.h"

#include "CameraView.h"
#include "RunReport.h"
#include "Support.h"

#include <KxApi_GUI/IKxDrawingTool.h>

#include <QLabel>
#include <QLocale>
#include <QTableWidget>
#include <memory>

namespace KxTest
{
namespace
{

using namespace KxApi;

class GraphDocks : public GuiTest
{
protected:
    GraphDocks()
    {
        QLocale::setDefault(QLocale::c()); // whatever the tester's language
        processEventGUI(false, 0);         // makes the application object
        m_pView = std::make_unique<CameraView>(m_report, nullptr);
        m_pView->resize(400, 300);
        m_pView->show();
        m_pImage = MakeImage(100, 50); // left half 0x80, right half 10
        auto* const pBytes = static_cast<unsigned char*>(m_pImage->GetIKxImage()->GetImageBuffer());
        for (size_t y = 0; y < 50; ++y)
            std::fill_n(pBytes + y * m_pImage->GetIKxImage()->GetImageLinePitch() + 50, 50, 10);
        m_pView->Window().RegisterIKxImage(m_pImage->GetIKxImage());
        m_pHistogram = std::make_unique<HistogramDock>(nullptr);
        m_pProfile = std::make_unique<ProfileDock>(nullptr);
        for (GraphDock* const pDock : std::initializer_list<GraphDock*>{m_pHistogram.get(), m_pProfile.get()})
        {
            pDock->show();
            pDock->Follow(*m_pView);
        }
    }

    template <class Pointer = GenApi::CIntegerPtr>
    Pointer Node(const char* szName)
    {
        return Pointer(m_pView->Window().GetINodeMap()->GetNode(szName));
    }
    /// A new object by features, which is selected; its points as parts of the image.
    void Draw(const char* szType, double dX0, double dY0, double dX1, double dY1)
    {
        const int64_t nCount = Node("DrawingObjectsCount")->GetValue();
        Node("DrawingObjectsCount")->SetValue(nCount + 1);
        Node("DrawingObjectSelector")->SetValue(nCount);
        Node<GenApi::CValuePtr>("DrawingObjectType")->FromString(szType);
        Node("DrawingObjectPointCount")->SetValue(2);
        const double points[][2] = {{dX0, dY0}, {dX1, dY1}};
        for (int i = 0; i < 2; ++i) {
            Node("DrawingObjectPointSelector")->SetValue(i);
            Node<GenApi::CFloatPtr>("DrawingObjectPointX")->SetValue(points[i][0]);
            Node<GenApi::CFloatPtr>("DrawingObjectPointY")->SetValue(points[i][1]);
        }
        Select(static_cast<size_t>(nCount));
    }
    void Select(size_t nIndex)
    {
        dynamic_cast<IKxDrawingMeasurements&>(*m_pView->Window().GetIKxDrawingTool()).SelectObject(nIndex);
    }
    /// Waits for the source that a dock tells, with the mean of its first component.
    static testing::AssertionResult Shows(const GraphDock& dock, const QString& strSource,
                                          const QString& strMean)
    {
        const auto shown = [&] {
            const QTableWidgetItem* const pMean = dock.findChild<QTableWidget*>()->item(0, 1);
            return dock.findChild<QLabel*>()->text() + " / " + (pMean ? pMean->text() : "");
        };
        if (PumpUntil([&] { return shown() == strSource + " / " + strMean; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << shown().toStdString();
    }

    RunReport m_report;
    ImageBufferPtr m_pImage;
    std::unique_ptr<CameraView> m_pView;
    std::unique_ptr<HistogramDock> m_pHistogram;
    std::unique_ptr<ProfileDock> m_pProfile;
};

TEST_F(GraphDocks, FollowWhatIsSelected)
{
    EXPECT_TRUE(Shows(*m_pHistogram, "Whole image, 100 x 50", "69.0"));
    const QString strMiddle = "Middle row; select a drawn line to see another (0.0, 24.0 to 99.0, 24.0)";
    EXPECT_TRUE(Shows(*m_pProfile, strMiddle, "69.0"));
    Draw("Rectangle", 0.6, 0.2, 0.8, 0.4);
    EXPECT_TRUE(Shows(*m_pHistogram, "Selected rectangle at 60, 10: 20 x 10", "10.0"));
    EXPECT_TRUE(Shows(*m_pProfile, strMiddle, "69.0"));
    Draw("Line", 0.105, 0.11, 0.305, 0.11);
    EXPECT_TRUE(Shows(*m_pProfile, "Selected line (10.0, 5.0 to 30.0, 5.0)", "128.0"));
    EXPECT_TRUE(Shows(*m_pHistogram, "Whole image, 100 x 50", "69.0"));
    Select(0);
    EXPECT_TRUE(Shows(*m_pHistogram, "Selected rectangle at 60, 10: 20 x 10", "10.0"));
    m_pView->Window().RegisterIKxImage(MakeImage(100, 50, KxPixelFormat_Mono8, 7)->GetIKxImage());
    EXPECT_TRUE(Shows(*m_pHistogram, "Selected rectangle at 60, 10: 20 x 10", "7.0"));
}

TEST_F(GraphDocks, DoNothingWhileTheyAreHidden)
{
    EXPECT_TRUE(Shows(*m_pHistogram, "Whole image, 100 x 50", "69.0"));
    m_pHistogram->hide();
    m_pView->Window().RegisterIKxImage(MakeImage(40, 30)->GetIKxImage());
    EXPECT_TRUE(Shows(*m_pProfile, "Middle row; select a drawn line to see another (0.0, 14.0 to 39.0, 14.0)",
                      "128.0"));
    EXPECT_EQ(m_pHistogram->findChild<QLabel*>()->text(), "Whole image, 100 x 50");
    m_pHistogram->show();
    EXPECT_TRUE(Shows(*m_pHistogram, "Whole image, 40 x 30", "128.0"));
}

} // namespace
} // namespace KxTest
